-- Makes the picture in the README: tarn-studio --lang en --theme dark --script scripts/screenshot.lua SAMPLE PICTURE
local sample, picture = studio.args[1], studio.args[2]
studio.open(sample)
studio.mode("GUI")
studio.resize(1280, 720)
for _, dialog in ipairs(studio.dialogs()) do
    if dialog:get("name") == "Inventory" then
        studio.select(dialog)
    end
end
studio.process()
studio.screenshot(picture)
