-- Files that are dropped on the window: pictures on controls and beside them, packages anywhere.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.resize(1280, 720)
studio.new()
local dialog = studio.create_dialog{name = "box", x = 300, y = 200, w = 400, h = 300}
dialog:set("caption_shown", false)
local picture = studio.create_control{type = 11, dialog = dialog, name = "p", x = 20, y = 20, w = 100, h = 80}
studio.broadcast(1)
local at_start = t.scene_bytes()
local file = t.temporary("图 picture.png")
studio.screenshot(file, "CDlgTopTable")

studio.drop(file, 340, 240)
t.same(picture:get("image"), "图 picture.png", "the control shows it")
t.same(#studio.controls(dialog), 1, "no other control")
studio.drop(file, 600, 420)
local made = studio.selection().control
t.same({#studio.controls(dialog), made:type(), made:get("image")}, {2, "CDXUTPicture", "图 picture.png"}, "a new one")
t.same({studio.undo(), studio.undo()}, {true, true}, "a step each")
t.same(t.scene_bytes() == at_start, true, "the scene from before")

t.refused("does not take", studio.drop, file)
t.refused("does not take", studio.drop, t.temporary("scene_bytes.txt"), 600, 420)
studio.play(true)
t.refused("does not take", studio.drop, file, 600, 420)
studio.play(false)

studio.drop(file, 600, 420)
studio.boxes()
studio.answer("no")
studio.drop(t.sample("hud.tarn"))
t.same(#studio.controls() > 5, true, "the package is open")
local boxes = studio.boxes()
t.same({#boxes, boxes[1].answer}, {1, "no"}, "it asked what to do with the changes")
t.same(boxes[1].buttons, {"yes", "no", "cancel"}, "its buttons")
