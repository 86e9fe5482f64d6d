-- Takes the README's pictures of the sample in each style that comes with the program.
-- Arguments: the package, and what the pictures' names begin with.
studio.open(studio.args[1])
studio.resize(1120, 640)
studio.process()
studio.page("CDlgTopTable"):control(6000):choose(2)
local list = studio.page("CDlgStyleManager"):control(6340)
studio.play(true)
studio.wait(700)
studio.screenshot(studio.args[2] .. "1.png", "view")
for row = 0, 1 do
    studio.play(false)
    studio.answer("ok")
    list:double_click(#list:rows() - 2 + row)
    studio.play(true)
    studio.wait(700)
    studio.screenshot(studio.args[2] .. row + 2 .. ".png", "view")
end
