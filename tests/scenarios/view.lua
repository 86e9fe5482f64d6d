-- The mouse in the view: moving, resizing, cancelling, adding to the selection, and the preview.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.resize(1280, 720)
studio.open(t.sample("tiny.tarn"))
local view = studio.view
t.same({view:size()}, {1280, 720}, "size of the view")
local camp = t.find(studio.dialogs(), "Camp")
local button, check = t.find(studio.controls(), "btnRest"), t.find(studio.controls(), "chkFire")

local function place(object)
    return {object:shown("x"), object:shown("y"), object:shown("width"), object:shown("height")}
end

-- A dialog by its caption, then by the handle of its lower right corner
studio.codes()
view:drag(150, 70, 180, 110)
t.same(place(camp), {70, 100, 240, 120}, "the moved dialog")
t.same(studio.selection().dialog, camp, "the moved dialog is current")
local codes = studio.codes()
t.same({codes[1], codes[#codes]}, {70000, 70001}, "codes of selecting and moving")
t.same(studio.undo(), true, "one step back")
t.same(place(camp), {40, 60, 240, 120}, "a drag is one step")
t.same(studio.undo(), false, "selecting is no step")
studio.redo()
view:drag(310, 244, 330, 254)
t.same(place(camp), {70, 100, 260, 130}, "the resized dialog")
t.same(t.repeat_all(studio.undo), 2, "steps of moving and resizing")
t.same(place(camp), {40, 60, 240, 120}, "the dialog at its first place")

-- A control, in pixels of its dialog
view:drag(192, 176, 208, 184)
t.same(place(button), {96, 84, 144, 32}, "the moved control")
t.same({studio.selection().control, studio.property_page()}, {button, "CDlgPropControl"}, "the control is current")
view:drag(40 + 96 + 144, 84 + 84 + 32, 40 + 96 + 144 - 24, 84 + 84 + 32 + 6)
t.same(place(button), {96, 84, 120, 38}, "the resized control")
t.same(t.repeat_all(studio.undo), 2, "steps of the control")
t.same(place(button), {80, 76, 144, 32}, "the control at its first place")

-- Escape in the middle of a drag
view:press(192, 176)
view:move(230, 190)
t.same(place(button), {118, 90, 144, 32}, "the control follows the mouse")
view:key("Escape")
t.same(place(button), {80, 76, 144, 32}, "Escape takes the drag back")
view:move(260, 200)
view:release(260, 200)
t.same(place(button), {80, 76, 144, 32}, "the mouse has nothing in hand any more")
t.same(studio.undo(), false, "no step is left of it")

-- Ctrl adds to the selection
view:click(192, 176)
view:click(192, 124, "left", "ctrl")
local selection = studio.selection()
t.same(t.names(selection.controls), {"btnRest", "chkFire"}, "both controls are selected")
t.same(selection.control, check, "the last one is current")
view:drag(192, 124, 202, 124)
t.same({button:get("x"), check:get("x")}, {90, 90}, "both move together")
studio.undo()
t.same({button:get("x"), check:get("x")}, {80, 80}, "and go back together")
view:click(640, 500)
t.same({#studio.selection().controls, #studio.selection().dialogs}, {0, 0}, "a click beside everything")

-- Turning the camera leaves the scene alone.
local before = t.scene_bytes()
view:press(640, 500, "right")
view:move(700, 520)
view:release(700, 520, "right")
view:wheel(640, 500, 2)
t.same(t.scene_bytes() == before, true, "the scene after camera movements")

-- The preview works on the interface itself, and leaves no trace.
studio.play(true)
view:click(192, 124)
t.same(check:shown("checked"), false, "a click in the preview takes the mark away")
view:drag(150, 70, 300, 200)
t.same(place(camp), {190, 190, 240, 120}, "a dialog can be moved in the preview")
t.same(t.scene_bytes() == before, true, "what is saved meanwhile is the author's scene")
studio.play(false)
t.same(check:get("checked"), true, "the mark is back")
t.same(place(camp), {40, 60, 240, 120}, "the dialog is back")
t.same(studio.undo(), false, "the preview is no step")
view:click(192, 124)
t.same({check:get("checked"), studio.selection().control}, {true, check}, "clicks select again")
