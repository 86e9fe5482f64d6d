-- Aids to exact placement: rulers, guide lines, snapping, other screens, the history list. All of it undone ends with
-- the same bytes.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.resize(1000, 700)
studio.open(t.sample("tiny.tarn"))
local view = studio.view
local at_start = t.scene_bytes()
local camp = t.find(studio.dialogs(), "Camp")
local rest = t.find(studio.controls(camp), "btnRest")

-- Middle of a control, and where its dialog's client area begins
local function middle(control)
    return camp:get("x") + control:get("x") + control:get("width") / 2,
        camp:get("y") + camp:get("caption_height") + control:get("y") + control:get("height") / 2
end

-- Drags a control by a way and answers where it then stands. The steps of a drag go there and a little beyond.
local function drag(control, dx, dy, mods)
    local x, y = middle(control)
    view:drag(x, y, x + dx, y + dy, mods)
    return control:get("x"), control:get("y")
end

-- Switching the ruler on switches snapping on with it.
local switches = studio.page("CDlgTopTable")
switches:control(6159):click()
t.same(switches:control(6555):checked(), true, "snapping")
switches:control(6163):click()

-- A guide line, and a control that snaps to it
view:drag(5, 300, 335, 320)
local left = camp:get("x") + rest:get("x")
t.same({drag(rest, 334 - left, 60)}, {335 - camp:get("x"), 136}, "to the guide, and down by the grid")
t.same(studio.undo(), true, "the move is undone")
t.same({drag(rest, 334 - left, 61, "ctrl")}, {334 - camp:get("x"), 137}, "not while Ctrl is held")
t.same(studio.undo(), true, "the move is undone")
view:press(335, 500)
view:move(350, 500)
view:key("Escape")
view:release(350, 500)
t.same({drag(rest, 334 - left, 60)}, {335 - camp:get("x"), 136}, "the guide is where it was")
studio.screenshot(t.temporary("guide.png"), "view")
view:drag(335, 500, 6, 500)
t.same(studio.undo(), true, "removing the guide is a step")
t.same(studio.redo(), true, "and done again")
studio.undo()
studio.undo()
t.same({drag(rest, 334 - left, 60)}, {335 - camp:get("x"), 136}, "it is there again")
switches:control(6163):click()
t.same(studio.undo(), true, "the move is undone")
t.same({drag(rest, 334 - left, 60)}, {336 - camp:get("x"), 136}, "a hidden one is none")
switches:control(6161):click()
studio.screenshot(t.temporary("counted_from_the_dialog.png"), "view")
switches:control(6159):click()
t.same(switches:control(6555):enabled(), false, "without the ruler")

-- Other screens: dialogs re-anchor, the mouse finds them, nothing of it is saved.
local function screen(entry)
    studio.menu(t.lang("视图", "View"), t.lang("屏幕尺寸", "Screen Size"), entry)
end
local other = t.lang("其他...", "Other...")
local before = t.scene_bytes()
local hint = t.find(studio.dialogs(), "Hint")
studio.boxes()
studio.answer("2000", "ok", "2000x1400")
screen(other)
t.same(#studio.boxes(), 3, "the prompt, what is wrong, and the prompt again")
t.same({view:size()}, {1000, 700}, "the view shows it reduced")
studio.select()
view:click((hint:get("x") + 6) / 2, (hint:get("y") + 6) / 2)
t.same(studio.selection().dialogs, {hint}, "a click in the reduced view")
studio.screenshot(t.temporary("reduced.png"), "view")
screen(t.lang("360 × 640  手机竖屏", "360 × 640  Phone, portrait"))
t.same({view:size()}, {360, 640}, "a small screen is shown as it is")
studio.play(true)
studio.screenshot(t.temporary("phone.png"), "view")
studio.play(false)
studio.answer(false)
screen(other)
t.same({view:size()}, {360, 640}, "a prompt that is cancelled changes nothing")
screen(t.lang("与视图相同", "As the View"))
t.same({view:size()}, {1000, 700}, "as the view")
t.same(t.scene_bytes() == before, true, "nothing of it is saved")
t.refused("no entry", screen, "1 × 1")

-- The history list
studio.menu(t.lang("视图", "View"), t.lang("历史记录", "History"))
local history = studio.page("CDlgHistory"):control(7001)
t.same(history:items(), {t.lang("（开始）", "(Start)"), t.lang("添加辅助线", "Add Guide"), t.lang("移动", "Move")}, "the steps")
t.same(history:index(), 2, "the present one")
studio.screenshot(t.temporary("history.png"))
history:choose(1)
t.same({rest:get("x"), rest:get("y")}, {80, 76}, "before the move")
history:choose(2)
t.same(t.scene_bytes() == before, true, "and after it")
studio.undo()
t.same(history:index(), 1, "the list follows")
history:choose(0)
t.same(t.scene_bytes() == at_start, true, "the scene as it was")
