-- Arranging controls in the view: drawing, selecting, duplicating, arrow keys, the clipboard, the context menu, a
-- caption edited in place. All of it undone ends with the same bytes.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.resize(1280, 720)
studio.open(t.sample("tiny.tarn"))
local view = studio.view
local at_start = t.scene_bytes()
local steps = 0

local function place(object)
    return {object:get("x"), object:get("y"), object:get("width"), object:get("height")}
end

-- Undo and redo of what was just done; what they bring back is not selected by itself.
local function step(what)
    steps = steps + 1
    local selection = studio.selection()
    t.same(studio.undo(), true, what .. " is undone")
    t.same(studio.redo(), true, what .. " is done again")
    studio.select(table.unpack(selection.controls_selected and selection.controls or selection.dialogs))
end

-- Drawing a dialog and a control in it
local dialogs = studio.page("CDlgGuiManager")
dialogs:control(6315):click()
view:drag(600, 100, 1000, 400)
step("drawing a dialog")
local home = studio.selection().dialog
local button = studio.create_control{type = 0, dialog = home, x = 20, y = 20, w = 100, h = 30}
local check = studio.create_control{type = 2, dialog = home, x = 20, y = 80, w = 100, h = 30}
steps = steps + 2
local ox, oy = 600, 100 + home:get("caption_height")

-- Selecting: plain, again in the same place, Ctrl, and with a frame
view:click(ox + 60, oy + 35)
t.same(studio.selection().controls, {button}, "a click selects the control")
t.same(studio.selection().dialog, home, "its dialog is current")
view:click(ox + 60, oy + 35)
t.same(studio.selection().dialogs, {home}, "another click reaches the dialog below it")
view:click(ox + 60, oy + 35)
t.same(studio.selection().controls, {button}, "and the next one begins from the top")
view:click(ox + 60, oy + 95, "left", "ctrl")
t.same(studio.selection().controls, {button, check}, "Ctrl adds")
view:click(ox + 60, oy + 95, "left", "ctrl")
t.same(studio.selection().controls, {button}, "and takes away")
view:drag(560, 90, 700, 300)
t.same(studio.selection().controls, {button, check}, "a frame selects what it touches")
t.same(studio.selection().control, check, "the last of them is current")

-- Both by the handle of their common frame, with the ratio kept, then moved by arrow keys
view:drag(ox + 120, oy + 110, ox + 220, oy + 120, "shift")
t.same({place(button), place(check)}, {{20, 20, 200, 60}, {20, 140, 200, 60}}, "both grow together")
step("resizing")
for _ = 1, 3 do
    view:key("Right")
end
view:key("Down", "shift")
t.same(place(button), {23, 30, 200, 60}, "the arrow keys move")
step("a run of arrow keys")
t.same(place(check), {23, 150, 200, 60}, "both of them")

-- Keys of the clipboard
view:key("D", "ctrl")
t.same(#studio.controls(home), 4, "duplicates")
t.same(place(studio.selection().controls[1]), {33, 40, 200, 60}, "a little aside")
step("duplicating")
view:key("Delete")
t.same(#studio.controls(home), 2, "the duplicates are deleted")
step("deleting")
t.same(#studio.boxes(), 0, "without a question")
view:drag(560, 90, 1200, 600)
studio.codes()
view:key("X", "ctrl")
t.same(#studio.controls(home), 0, "both were cut")
t.same(studio.codes(), {70002}, "code of a removal")
step("cutting")
view:click(ox + 300, oy + 250)
view:key("V", "ctrl")
local pasted = studio.controls(home)
t.same({place(pasted[1]), place(pasted[2])}, {{23, 30, 200, 60}, {23, 150, 200, 60}}, "pasted in their old places")
t.same(studio.selection().controls, pasted, "what was pasted is selected")
step("pasting")
view:key("V", "ctrl")
t.same(place(studio.controls(home)[3]), {33, 40, 200, 60}, "the second time they lie beside the first ones")
step("pasting again")
view:key("A", "ctrl")
t.same(#studio.selection().controls, 4, "all controls of the dialog")

-- The context menu selects what it was called for. Turning the camera calls none.
studio.boxes()
local function menu_item(text)
    for _, item in ipairs(studio.boxes()[1].items) do
        if item.text == text then
            return item.id, item.enabled, item.checked
        end
    end
    error("there is no item " .. text, 2)
end
view:click(ox + 300, oy + 250)
studio.answer(0)
view:click(ox + 28, oy + 33, "right")
t.same(studio.selection().controls, {pasted[1]}, "a right click selects")
local delete = menu_item(t.lang("删除", "Delete"))
studio.answer(delete)
view:click(ox + 28, oy + 33, "right")
t.same(#studio.controls(home), 3, "deleted by the menu")
step("deleting by the menu")
local check2 = pasted[2]
studio.boxes()
studio.answer(0)
view:click(ox + 28, oy + 153, "right")
local boxes = studio.boxes()[1].items
local by_text = {}
for _, item in ipairs(boxes) do
    by_text[item.text] = item.id
end
studio.codes()
studio.answer(by_text[t.lang("置顶", "Bring to Top")])
view:click(ox + 28, oy + 153, "right")
t.same(studio.controls(home)[3], check2, "on top")
t.same(studio.codes(), {70005}, "code of a layer")
step("bringing to the top")
studio.codes()
studio.answer(by_text[t.lang("锁定", "Lock")])
view:click(ox + 28, oy + 153, "right")
t.same({check2:get("locked"), studio.codes()}, {true, {70003}}, "locked")
step("locking")
view:key("Delete")
view:key("Left")
t.same({#studio.controls(home), check2:get("x")}, {3, 23}, "keys leave what is locked alone")
studio.boxes()
view:press(ox + 300, oy + 250, "right")
view:move(ox + 340, oy + 260)
view:release(ox + 340, oy + 260, "right")
t.same(#studio.boxes(), 0, "turning the camera opens no menu")

-- A dialog is deleted only after the question
local question = t.lang("你正在删除你的对话框!", "Ensure delete dialog?")
view:click(ox + 300, oy - 10)
studio.answer("cancel")
view:key("Delete")
t.same(t.boxes(), {{"message", question, "cancel"}}, "the question")
t.same(#studio.dialogs(), 3, "nothing was deleted")

-- A text and a caption, edited in place
local camp = t.find(studio.dialogs(), "Camp")
local rest = t.find(studio.controls(camp), "btnRest")
local before = rest:get("text")
view:double_click(192, 176)
view:key("S")
view:key("I", "shift")
view:key("T")
view:key("Return")
t.same(rest:get("text"), "sIt", "the text that was typed")
step("editing a text")
view:double_click(192, 176)
view:key("A")
view:key("Escape")
t.same(rest:get("text"), "sIt", "Escape drops it")
view:double_click(120, 72)
view:key("C")
view:click(1200, 650)
t.same(camp:get("caption"), "c", "a click elsewhere stores the caption")
step("editing a caption")

t.same(t.repeat_all(studio.undo), steps, "steps of all this")
t.same(rest:get("text"), before, "the text is the old one")
t.same(t.scene_bytes() == at_start, true, "the scene as it was")
