package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local g = require("guide")

g.open()
studio.view:click(g.place(g.control("Start")))
local page = studio.page("CDlgPropButton")
studio.answer(function(editor)
    editor:control(6601):set_text(g.code("07-script", 1))
    studio.wait(300)
    g.shot("07-editor", "CDlgCmdTest")
    editor:control(6614):click()
    studio.wait(100)
    assert(g.control("Question"):get("text"):find(g.lang("欢迎", "Welcome")), "the run changes the scene")
    editor:control(1):click()
end)
page:control(6520):click()
assert(#studio.events() == 1)
g.save()

studio.play(true)
g.click("Player")
for letter in ("MARA"):gmatch(".") do
    studio.view:key(letter)
end
g.click("Start")
assert(g.control("Question"):shown("text"):find("mara"))
g.shot("07-preview", "view", "440x310+160+80")
studio.play(false)

-- A misspelled name
local name = studio.functions()[#studio.functions()]
for _, event in ipairs(studio.events()) do
    name = event.name
end
local good = studio.function_text(name)
studio.set_function_text(name, (good:gsub('control%("Player"%)', 'control("Plyer")')))
studio.wait(500)
assert(#studio.problems() == 1)
studio.menu(g.lang("视图", "View"), g.lang("问题", "Problems"))
local opened = 0
local function look(editor)
    assert(editor:control(6601):text():find("Plyer"))
    opened = opened + 1
    editor:control(2):click()
end
studio.answer(look)
studio.page("CDlgProblems"):control(7021):double_click(0)
studio.menu(g.lang("视图", "View"), g.lang("问题", "Problems"))
studio.play(true)
g.click("Start")
studio.wait(300)
studio.resize(760, 400)
g.shot("07-window")
studio.resize(760, 500)
studio.play(false)
studio.answer(look)
studio.page("CDlgEventLog"):control(7011):double_click(0)
assert(opened == 2)
studio.set_function_text(name, good)
