-- An author binds a script to a button, writes it with help, presses Play and clicks the button.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

local blue, black = 0x0000FF, 0x000000
local editor_text, ok, cancel, run = 6601, 1, 2, 6614

studio.new()
studio.resize(900, 600)
local home = studio.create_dialog{name = "Home", x = 40, y = 40, w = 300, h = 200}
local button = studio.create_control{type = 0, dialog = home, name = "Start", x = 20, y = 20, w = 120, h = 30}
local check = studio.create_control{type = 2, dialog = home, name = "Sound", x = 20, y = 60, w = 120, h = 30}
studio.select(button)

local page = studio.page("CDlgPropButton")
local click_script, click_remove = page:control(6520), page:control(6096)
t.same(click_script:text(), t.lang("鼠标点击", "Click"), "caption of the first event")
t.same({click_script:color(), click_remove:enabled()}, {black, false}, "an event without a script")

-- The editor: write, try, keep.
studio.answer(function(editor)
    editor:control(editor_text):set_text('control("Start").text = "clicked"\nprint("run")')
    editor:control(run):click()
    t.same(button:get("text"), "clicked", "the run reaches the scene")
    editor:control(ok):click()
end)
click_script:click()
local name = studio.functions()[1]
t.same(name, "GUI_FUNC_" .. button:get("id") .. "_Click", "name of the function")
t.same(studio.function_text(name), 'control("Start").text = "clicked"\nprint("run")', "its text")
t.same({click_script:color(), click_remove:enabled()}, {blue, true}, "an event with a script")
local events = studio.events()
t.same({#events, events[1].control == button, events[1].type, events[1].name}, {1, true, 0x101, name}, "events")
t.same(button:get("text"), "Start", "a run is taken back")

-- Cancelling leaves function and event, as they were made by opening.
studio.answer(function(editor)
    editor:control(cancel):click()
end)
page:control(6418):click()
t.same(#studio.functions(), 2, "functions after a cancelled script")
t.same(page:control(6418):color(), blue, "it is there, and empty")

-- An editor with changes that an answer leaves open is closed.
studio.answer(function(editor)
    editor:control(editor_text):set_text("x = 1")
end)
t.refused("was left open", click_script.click, click_script)

-- Play, and what happens in it.
local before = t.scene_bytes()
button:set("name", "Renamed")
studio.undo()
local x, y = 40 + 80, 40 + home:get("caption_height") + 35
studio.play(true)
t.same(page:enabled() and click_script:enabled(), false, "pages while it runs")
studio.view:click(x, y)
studio.wait(100)
t.same({button:shown("text"), button:get("text")}, {"clicked", "Start"}, "the script ran, and shows what it did")
local rows = studio.page("CDlgEventLog"):control(7011):rows()
local last = rows[#rows]
t.same({last[2], last[3], last[4], last[5]}, {"Start", t.lang("鼠标点击", "Click"), name, t.lang("完成", "done")},
       "the last row of the log")
t.same(t.scene_bytes() == before, true, "saving while it runs")
studio.play(false)
t.same(button:get("text"), "Start", "the authored text is back")
t.same(t.scene_bytes() == before, true, "saving after it")

-- A message is shown when the function is done.
studio.set_function_text(name, 'message("hello", "title") return 1')
studio.boxes()
studio.play(true)
studio.answer("ok")
studio.view:click(x, y)
studio.process()
studio.play(false)
local boxes = studio.boxes()
t.same({#boxes, boxes[1] and boxes[1].text, boxes[1] and boxes[1].title}, {1, "hello", "title"}, "the message")

-- Messages without end: each box can stop the preview.
studio.set_function_text(name, 'message("a") while true do wait(0) message("b") end')
studio.play(true)
studio.answer("ok", "ok", "cancel")
studio.view:click(x, y)
studio.wait(300)
boxes = studio.boxes()
t.same({#boxes, boxes[1].text, boxes[3].text, boxes[3].buttons}, {3, "a", "b", {"ok", "cancel"}}, "the boxes")
t.same(page:enabled(), true, "the preview is over")

-- While it runs, Enter on a row of the log opens its function, which can be changed, but not tried: that would end what
-- waits in the scene.
studio.set_function_text(name, 'print("begin") wait(0.5) control("Start").text = "waited"')
studio.play(true)
studio.view:click(x, y)
studio.wait(100)
local log = studio.page("CDlgEventLog"):control(7011)
local function result()
    return log:rows()[#log:rows()][5]
end
local waits = result()
local can_run, tip
studio.answer(function(editor)
    can_run, tip = editor:control(run):enabled(), editor:control(run):tooltip()
    editor:control(editor_text):set_text('print("changed")')
    editor:control(ok):click()
end)
log:select(#log:rows() - 1)
log:enter()
t.same({can_run, #tip > 2}, {false, true}, "Run while the scene plays, and why")
t.same(studio.function_text(name), 'print("changed")', "the changed function")
studio.wait(700)
t.same(button:shown("text"), "waited", "the function that waited")
t.same({waits, result()}, {t.lang("等待中", "waiting"), t.lang("完成", "done")}, "its row before and after")
studio.play(false)
studio.boxes()

-- Removing asks first; event and function go together.
studio.answer("cancel")
click_remove:click()
t.same(#studio.events(), 2, "events after Cancel")
studio.answer("ok")
click_remove:click()
t.same({#studio.events(), #studio.functions(), click_script:color()}, {1, 1, black}, "after OK")
local asked = studio.boxes()
t.same({asked[1].text, asked[1].title},
       {t.lang("是否删除当前脚本？", "Remove Script?"), t.lang("脚本删除！请注意！", "Removed script cannot be recovered!")},
       "the question")

-- A dialog's own scripts.
studio.select(home)
local scripts = studio.page("CDlgPropDialogScript")
studio.answer(function(editor)
    editor:control(editor_text):set_text('control("Start").text = "closed"')
    editor:control(ok):click()
end)
scripts:control(6426):click()
t.same(scripts:control(6426):color(), blue, "the dialog's script")
studio.play(true)
studio.view:click(40 + home:get("width") - 12, 52)
studio.wait(60)
t.same({home:shown("visible"), button:shown("text")}, {false, "closed"}, "closing runs it")
studio.play(false)
studio.select(home)
studio.answer("ok")
scripts:control(6524):click()
t.same(scripts:control(6426):color(), black, "the dialog's script is gone")

-- What is broken is listed; Enter jumps there.
check:set("image_checked", "nowhere.png")
studio.menu(t.lang("视图", "View"), t.lang("问题", "Problems"))
studio.wait(400)
local problems = studio.page("CDlgProblems"):control(7021)
t.same(problems:rows(), {{"Sound", t.lang("图片 nowhere.png 不在文件包中。", "The picture nowhere.png is not in the package.")}},
       "a missing picture")
problems:select(0)
problems:enter()
t.same(studio.selection().control == check, true, "the control with the missing picture")
check:set("image_checked", "")

-- Scripts of controls that are gone are listed too, and cleaned up.
studio.select(button)
studio.page("CDlgTopTable"):control(6000):choose(1)
studio.view:key("Delete")
t.same(#studio.controls(), 1, "controls")
t.same(#studio.events(), 1, "the event of the removed control is kept")
studio.wait(400)
t.same({#problems:rows(), problems:rows()[1][2]:find("GUI_FUNC_", 1, true) ~= nil}, {1, true}, "the event of nobody")
studio.page("CDlgGuiManagerCtrl"):control(6592):click()
studio.wait(400)
t.same({#studio.events(), #studio.functions(), #problems:rows()}, {0, 0, 0}, "cleaned up")
