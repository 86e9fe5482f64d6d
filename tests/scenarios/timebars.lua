-- An inventory that slides in: a timebar made, recorded, played, saved and run by a script, and a script key.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.new()
studio.resize(1280, 720)
local home = studio.create_dialog{name = "Inventory", x = 100, y = 120, w = 300, h = 200}
local log = studio.create_control{type = 13, dialog = home, name = "Log", x = 10, y = 10, w = 200, h = 100}
local timeline = studio.timeline
local list, tools = studio.page("CDlgGuiManagerTimer"), studio.page("CDlgTopTimer")

-- The mode
t.same(list:visible(), false, "the list belongs to its mode")
studio.mode("Timebar")
t.same({list:visible(), tools:visible(), studio.property_page()}, {true, true, "CDlgPropTimer"}, "pages of the mode")
t.same({studio.selection().editing, studio.selection().menu_editing}, {true, false}, "the interface is still edited")
tools:control(6468):click()
t.same(#studio.boxes(), 0, "playing without a timebar")

-- A new timebar
studio.codes()
studio.answer("2.5")
list:control(6568):click()
t.same(studio.codes(), {70007}, "code of a new timebar")
local bar = studio.current_timebar()
t.same(list:control(6567):columns(),
       {t.lang("名称", "Name"), t.lang("时间", "Time"), t.lang("脚本", "Script"), t.lang("对象", "Object")}, "columns")
t.same(list:control(6567):rows(), {{"Bar1", "2.5Sec", "0", "0"}}, "its row")
t.same(list:control(6567):selected(), {0}, "it is selected")
t.same(tools:control(6157):items(), {"Bar1"}, "the tools list it")

-- What is selected in the view shows its page; undo leaves the page as it is
studio.view:click(350, 290)
t.same(studio.property_page(), "CDlgPropDialogAll", "the page of what is selected")
studio.mode("GUI")
studio.mode("Timebar")
bar:set("total_length", 3)
studio.undo()
t.same({studio.property_page(), bar:get("total_length")}, {"CDlgPropTimer", 2.5}, "undo")

-- Recording: the place at the begin and another one after two seconds
studio.select(home)
tools:control(6487):click()
t.same(tools:control(6158):items(), {t.lang("窗口:", "Dialog:") .. "Inventory"}, "its target")
timeline:click(math.floor(timeline:pixel_from_time(2)), 30)
t.same(timeline:current_time(), 2, "the cursor")
t.same(bar:get("current_time"), 2, "and the timebar's time")
studio.view:drag(350, 290, 550, 290)
t.same({home:get("x"), home:shown("x")}, {100, 300}, "moving it changes the pose alone")
studio.menu(t.lang("编辑", "Edit"), t.lang("记录关键帧", "Record Key"))
t.same(list:control(6567):rows()[1][4], "1", "one object")
tools:control(6479):click()
t.same({timeline:current_time(), home:shown("x")}, {0, 100}, "the key before")
tools:control(6495):click()
t.same({timeline:current_time(), home:shown("x")}, {2, 300}, "the key behind")
tools:control(6495):click()
t.same(timeline:current_time(), 2, "there is none behind the last")

-- Scrubbing and leaving change no byte
local saved = t.scene_bytes()
timeline:click(math.floor(timeline:pixel_from_time(1)), 30)
t.same(home:shown("x"), 200, "halfway")
t.same(t.scene_bytes() == saved, true, "scrubbing")
studio.mode("GUI")
t.same(home:shown("x"), 100, "as authored")
t.same(studio.property_page(), "CDlgPropDialogAll", "the dialog's page")
studio.mode("Timebar")
t.same({home:shown("x"), studio.property_page()}, {200, "CDlgPropTimer"}, "back in the mode")

-- Playing in the editor
tools:control(6479):click()
tools:control(6468):click()
t.same(bar:get("playing"), true, "it plays")
studio.wait(300)
tools:control(6468):click()
t.same(bar:get("playing"), false, "and stops")
t.same(home:shown("x") > 100 and home:shown("x") < 300, true, "on its way")
t.same(t.scene_bytes() == saved, true, "playing changes no byte")

-- A script key, and a preview from the mode, where a script plays the timebar
studio.set_function_text("arrived", 'control("Log"):add_line("arrived")')
timeline:click(math.floor(timeline:pixel_from_time(1)), 30)
studio.answer(0)
timeline:click(300, 50, "right")
local menu = studio.boxes()
t.same(menu[#menu].kind, "menu", "the menu of the timeline")
bar:set("auto_play", true)
t.same(tools:enabled(), true, "the tools")
studio.play(true)
studio.wait(400)
t.same(home:shown("x") > 100, true, "it plays by itself")
t.same(home:get("x"), 100, "what is authored stays")
t.same(tools:enabled(), false, "the tools rest meanwhile")
studio.play(false)
t.same({tools:enabled(), home:shown("x")}, {true, 200}, "and the pose comes back")

-- Saved, read, undone
local file = t.temporary("timebars.tarn")
studio.save(file)
studio.open(file)
t.same(#studio.timebars(), 1, "read again")
t.same(studio.timebars()[1]:objects()[1]:target():get("name"), "Inventory", "its object")
list:control(6567):select(0)
studio.answer("ok")
list:control(6317):click()
t.same(t.boxes(), {{"message", t.lang("是否确定删除时间轴", "Ensure delete timebar:") .. "Bar1", "ok"}}, "the question")
t.same(#studio.timebars(), 0, "deleted")
t.same(studio.undo(), true, "undoing it")
t.same(#studio.timebars(), 1, "it is there again")
print("ok")
