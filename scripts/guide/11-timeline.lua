package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local g = require("guide")

g.open()
studio.mode("Timebar")
studio.resize(760, 420)
local line, bar = studio.timeline, studio.timebars()[1]
local list = studio.page("CDlgGuiManagerTimer"):control(6567)
list:select(0)
local welcome = bar:objects()[1]
local function x(time)
    return math.floor(line:pixel_from_time(time) + 0.5)
end
local function times()
    local found = {}
    for i, key in ipairs(welcome:variables()[1]:keys()) do
        found[i] = key.time
    end
    return table.concat(found, " ")
end
assert(times() == "0.0 1.0", times())

-- Unfolded, and the later key half a second later
local top, height = line:row(welcome)
line:double_click(x(1.8), top + height // 2)
line:drag(x(1), top + height // 2, x(1.5), top + height // 2)
assert(times() == "0.0 1.5", times())

-- An ease for the keys that are selected
assert(#line:selected_keys() > 0)
studio.answer(33023)
line:click(x(1.5), top + height // 2, "right")

-- A script key at the same time
studio.answer(function(editor)
    editor:control(6601):set_text(g.code("11-timeline", 1))
    editor:control(1):click()
end)
line:double_click(x(1.5), 60)
assert(#bar:script_keys() == 1)
line:click(x(0.75), 4)
g.shot("11-window")
studio.page("CDlgTopTimer"):control(6883):click()
studio.resize(1120, 420)
g.shot("11-table", "CDlgTopTimer")
studio.resize(760, 420)
studio.page("CDlgTopTimer"):control(6883):click()
list:select(0)
g.save()

studio.play(true)
studio.wait(2300)
studio.view:key("O")
studio.wait(100)
assert(g.control("Player"):shown("text") == "o", "the script key gave the keyboard to the edit box")
studio.play(false)
studio.mode("GUI")
