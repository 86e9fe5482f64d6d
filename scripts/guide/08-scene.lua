package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local g = require("guide")

local function event(control, page, id, text)
    studio.select(control)
    g.script(studio.page(page):control(id), text)
end

g.open()
g.tab(0)
studio.page("CDlgGuiManager"):control(6315):click()
studio.view:drag(500, 20, 740, 240)
g.type("CDlgPropDialog", 6018, "Hall")
g.type("CDlgPropDialog", 6362, g.lang("大堂", "The Hall"))
g.draw(6354, "Log", 512, 56, 728, 190)
g.draw(6328, "SettingsButton", 620, 200, 728, 230)
g.type("CDlgPropButton", 6352, g.lang("设置", "Settings"))

-- A slider that drives a bar and a text
event(g.control("Volume"), "CDlgPropSlider", 6520, g.code("08-scene", 1))
event(g.control("SettingsButton"), "CDlgPropButton", 6520, g.code("08-scene", 2))
studio.select(g.control("Start"))
g.script(studio.page("CDlgPropButton"):control(6520), g.code("08-scene", 3), function()
    studio.wait(300)
    g.shot("08-editor", "CDlgCmdTest")
end)
local list = studio.page("CDlgGuiManager"):control(6340)
g.tab(0)
for row, cells in ipairs(list:rows()) do
    if cells[1] == "Hall" then
        list:click_cell(row - 1, 1)
    end
end
studio.select()
assert(#studio.problems() == 0)
g.save()

studio.play(true)
g.click("Start")
assert(g.control("Question"):shown("text") == g.lang("请先告诉我您的名字。", "Please tell me your name."))
for letter in ("MARA"):gmatch(".") do
    studio.view:key(letter)
end
assert(g.control("Player"):shown("text") == "mara", "the edit box has the keyboard")
g.click("Start")
studio.wait(3600)
g.click("SettingsButton")
local x, y = g.place(g.control("Volume"), 220)
studio.view:click(x, y)
studio.wait(200)
assert(#g.control("Log"):shown("lines") == 5)
assert(g.control("Level"):shown("percent") > 60)
g.shot("08-preview", "view")
studio.play(false)
assert(g.control("Level"):get("percent") == 50)
