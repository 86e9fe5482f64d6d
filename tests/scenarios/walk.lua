-- A walk through the list of dialogs: drawing one, layers, removing, export, import and merge, all undone and redone.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

local list_page = studio.page("CDlgGuiManager")
local list = list_page:control(6340)
local create, remove = list_page:control(6315), list_page:control(6317)
local move_down, move_up = list_page:control(6318), list_page:control(6320)
local shown, hidden = t.lang("显示", "Shown"), t.lang("隐藏", "Hidden")

studio.resize(1280, 720)
t.same(studio.open(t.sample("hud.tarn")), true, "opening the sample")
t.same(#studio.boxes(), 0, "boxes of opening")
local at_start = t.scene_bytes()
local count = #studio.dialogs()
t.same(count, 16, "dialogs of the sample")
t.same(#list:rows(), count, "rows of the list")
t.same(list:columns(), {t.lang("名称", "Name"), t.lang("状态", "State")}, "columns")
t.same(list:rows()[1], {"Confirm", hidden}, "the top layer is the first row")

-- Drawing a dialog
create:click()
t.same(create:checked(), true, "the tool is armed")
studio.view:drag(300, 200, 520, 380)
t.same(create:checked(), false, "drawing releases the button")
local dialogs = studio.dialogs()
t.same(#dialogs, count + 1, "dialogs after drawing")
local drawn = dialogs[#dialogs]
t.same({drawn:get("x"), drawn:get("y"), drawn:get("width")}, {300, 200, 220}, "place of the drawn dialog")
t.same(list:rows()[1], {drawn:get("name"), shown}, "the drawn dialog is the first row")
t.same(list:selected(), {0}, "the drawn dialog's row is selected")
t.same(studio.selection().dialog, drawn, "the drawn dialog is current")

-- Showing and hiding
list:click_cell(0, 1)
t.same(list:rows()[1][2], hidden, "state after a click beside the name")
t.same(drawn:get("visible"), false, "the dialog is hidden")
list:click_cell(5, 1)
t.same(list:selected(), {0}, "hiding another one leaves the selection alone")
t.same(studio.selection().dialog, drawn, "and the current dialog")
list:click_cell(0, 1)
list:click_cell(5, 1)
t.same(drawn:get("visible"), true, "the dialog is shown again")

-- Layers
t.same({move_up:enabled(), move_down:enabled()}, {false, true}, "moving from the top")
move_down:click()
t.same(list:selected(), {1}, "row after moving down")
t.same(studio.dialogs()[count], drawn, "layer after moving down")
move_up:click()
t.same(list:selected(), {0}, "row after moving up")
t.same(studio.dialogs()[count + 1], drawn, "layer after moving up")

-- Removing
local question = t.lang("你正在删除你的对话框!", "Ensure delete dialog?")
studio.boxes()
studio.answer("cancel")
remove:click()
t.same(#studio.dialogs(), count + 1, "dialogs after a cancelled removal")
studio.answer("ok")
remove:click()
t.same(#studio.dialogs(), count, "dialogs after the removal")
t.same(t.boxes(), {{"message", question, "cancel"}, {"message", question, "ok"}}, "boxes of removing")
t.refused("was deleted", drawn.get, drawn, "name")
studio.undo()
t.same(drawn:get("width"), 220, "undo brings the same object back")
studio.redo()
t.refused("was deleted", drawn.get, drawn, "name")

-- Export and import
local exported = t.temporary("exported.tarn")
os.remove(exported)
studio.answer(exported)
list_page:control(6321):click()
t.same(t.exists(exported), true, "the exported file")
t.same(list_page:control(6321):checked(), false, "the export button is released")

t.same(studio.boxes()[1].kind, "file", "export asks for a file")
studio.answer("cancel")
list_page:control(6016):click()
studio.answer("ok", exported)
list_page:control(6016):click()
local warning = t.lang("导入界面将会覆盖当前编辑的界面和风格，确定是否继续？",
                       "Import a gui will overwrite all controls and dialogs,continue?")
t.same(t.boxes(), {{"message", warning, "cancel"}, {"message", warning, "ok"}, {"file", "", exported}},
       "boxes of importing")
t.same(#studio.dialogs(), count, "dialogs after importing what was exported")

-- Merge
local merge = list_page:control(6017)
studio.answer(exported, false)
merge:click()
studio.answer(exported, "part", "cancel")
merge:click()
t.same(#studio.dialogs(), count, "dialogs after two cancelled merges")
studio.boxes()
studio.answer(exported, "part", "no")
merge:click()
t.same(#studio.dialogs(), 2 * count + 1, "dialogs after the merge: the other root dialog is one of them")
t.same(#studio.controls(t.find(studio.dialogs(), "part")), #studio.controls(studio.root_dialog()), "its controls")
local boxes = studio.boxes()
t.same({boxes[1].kind, boxes[2].kind, boxes[3].kind}, {"file", "prompt", "message"}, "boxes of merging")
t.same(boxes[3].buttons, {"yes", "no", "cancel"}, "what may be done with the styles")
t.same(studio.pending(), 0, "answers left over")

-- Everything back and forth
local at_end = t.scene_bytes()
local steps = t.repeat_all(studio.undo)
t.same(t.scene_bytes() == at_start, true, "the scene after undoing everything is that of the start")
t.same(t.repeat_all(studio.redo), steps, "steps of redo")
t.same(t.scene_bytes() == at_end, true, "the scene after redoing everything is that of the end")
