-- A function written with completion, run with what it will be called with, and bound to a second event.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.resize(1280, 720)
studio.new()
local dialog = studio.create_dialog{name = "box", x = 300, y = 200, w = 400, h = 300}
local start = studio.create_control{type = 0, dialog = dialog, name = "启动 Start", x = 20, y = 20, w = 100, h = 30}
local box = studio.create_control{type = 2, dialog = dialog, name = "Hard", x = 20, y = 60, w = 100, h = 30}
studio.broadcast(1)

-- The editor begins with the arguments' names; typing a quote after control( lists the names of controls.
studio.select(box)
local page = studio.page("CDlgPropCheck")
studio.answer(function(editor)
    local script = editor:control(6601)
    t.same(script:text(), "local self, event, value = ...\n", "the first line")
    script:type('control("启')
    script:key("Return")
    script:type('").enabled = not value')
    t.same(script:text(), 'local self, event, value = ...\ncontrol("启动 Start").enabled = not value', "completed")
    editor:control(6614):click()
    t.same(start:shown("enabled"), true, "it ran with the value of now")
    editor:control(1):click()
end)
page:control(6520):click()
local bound = studio.events()[1]
t.same(bound.control, box, "the event")
t.same(studio.function_text(bound.name):match("^local self, event, value = %.%.%.") ~= nil, true, "the function")

-- The same function for another event, and what becomes of it.
studio.select(start)
page = studio.page("CDlgPropButton")
studio.answer(2, function(pick)
    pick:control(6881):set_text("GUI_FUNC")
    pick:control(1):click()
end)
page:control(6520):right_click()
t.same({#studio.events(), studio.events()[2].name}, {2, bound.name}, "two events, one function")
page:control(6096):click()
t.same({#studio.events(), #studio.functions()}, {1, 1}, "the function stays while the other event names it")
studio.select(box)
studio.answer("ok")
studio.page("CDlgPropCheck"):control(6096):click()
t.same({#studio.events(), #studio.functions()}, {0, 0}, "and goes with that")
