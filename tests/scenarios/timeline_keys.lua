-- Keys and script keys of a timebar by mouse and menu: made, dragged, dropped off the timeline to delete them, undone; the
-- rows' eyes and locks.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.new()
studio.resize(1280, 900)
local panel = studio.create_dialog{name = "Panel", x = 100, y = 120, w = 300, h = 200}
local timeline = studio.timeline
studio.mode("Timebar")
local bar = studio.create_timebar{name = "Move", total_length = 6}
studio.broadcast(70007)
local tools = studio.page("CDlgTopTimer")
local ruler, keys, scripts = 4, 14, 53
local function x(time)
    return math.floor(timeline:pixel_from_time(time) + 0.5)
end
local function key_times()
    local times = {}
    for i, key in ipairs(bar:objects()[1]:variables()[1]:keys()) do
        times[i] = key.time
    end
    return times
end

-- Three keys
studio.select(panel)
for i, time in ipairs({0, 2, 4}) do
    timeline:click(x(time), ruler)
    panel:set("x", 100 + i * 40)
    tools:control(6487):click()
end
t.same(key_times(), {0, 2, 4}, "three keys")

-- One is dragged along the timeline, and one off it
timeline:drag(x(2), keys, x(3), keys, "alt")
t.same(key_times(), {0, 3, 4}, "a key that was dragged")
studio.answer("cancel")
timeline:drag(x(4), keys, x(4), 400)
t.same(t.boxes(), {{"message", t.lang("是否删除被选择的关键帧？", "Remove Seletede Key frames?"), "cancel"}}, "it asks")
t.same(key_times(), {0, 3, 4}, "and deletes nothing")
studio.answer("ok")
timeline:drag(x(4), keys, x(4), 400)
t.same(key_times(), {0, 3}, "dropped off")
studio.undo()
t.same(key_times(), {0, 3, 4}, "and back")

-- A script key comes by the menu, with a function that there is
studio.boxes()
local rings = 'dialog("Panel").caption = "rung"'
studio.set_function_text("ring", rings)
studio.answer(32798, function(pick)
    pick:control(6882):choose(0)
    pick:control(1):click()
end)
timeline:click(x(1), scripts, "right")
t.same(bar:script_keys(), {1}, "its time")
studio.boxes()
timeline:drag(x(1), scripts, x(2), scripts, "alt")
t.same(bar:script_keys(), {2}, "dragged")
studio.answer("ok")
timeline:drag(x(2), scripts, x(2), 400)
t.same(t.boxes(), {{"message", t.lang("是否删除被选择的脚本？", "Remove Seletede Script?"), "ok"}}, "it asks")
t.same({bar:script_keys(), studio.function_text("ring")}, {{}, rings}, "the key goes, a function with another use stays")
studio.undo()
t.same(bar:script_keys(), {2}, "and back")

-- It runs in a preview
bar:set("auto_play", true)
timeline:drag(x(2), scripts, x(0) + 4, scripts, "alt")
studio.play(true)
studio.wait(500)
t.same(panel:shown("caption"), "rung", "the function ran")
studio.play(false)
t.same(panel:shown("caption"), panel:get("caption"), "and left nothing")

-- Muted, the object is as it was authored
timeline:click(x(4), ruler)
local shown, authored = panel:shown("x"), panel:get("x")
studio.answer(33045)
local top = timeline:row(bar:objects()[1])
timeline:click(x(5), top + 8, "right")
t.same(panel:shown("x"), authored, "muted")
studio.answer(33045)
timeline:click(x(5), top + 8, "right")
t.same(panel:shown("x"), shown, "and heard again")
