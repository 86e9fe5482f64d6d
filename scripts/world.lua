-- Takes the README's picture of a world: the sample in a preview, with a figure on its way, a dialog on a panel, a camera's
-- picture and a map. Arguments: the sample, the picture.
local sample, picture = studio.args[1], studio.args[2]
studio.resize(1120, 640)
studio.open(sample)
studio.play(true)
studio.wait(1500)
studio.screenshot(picture, "view")
