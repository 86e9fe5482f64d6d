package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local g = require("guide")

g.open()
g.tab(1)
local buttons = studio.page("CDlgTopTable")
local music, easy, hard, room = g.control("Music"), g.control("Easy"), g.control("Hard"), g.control("Room")

-- Selected from the bottom up: the last one, which the others follow, is the check box.
for i, control in ipairs({room, hard, easy, music}) do
    local x, y = g.place(control, 8)
    studio.view:click(x, y, "left", i > 1 and "ctrl" or nil)
end
assert(#studio.selection().controls == 4 and studio.selection().control == music)
buttons:control(6150):click()
assert(easy:get("x") == music:get("x") and hard:get("x") == music:get("x") and room:get("x") == music:get("x"))
buttons:control(6155):click()
assert(easy:get("width") == music:get("width"))
buttons:control(6090):click()
local gap = easy:get("y") - music:get("y") - music:get("height")
assert(math.abs(hard:get("y") - easy:get("y") - easy:get("height") - gap) <= 1, "even gaps")
g.shot("04-aligned")

-- The ruler, a guide line, and a control that snaps to it.
buttons:control(6159):click()
buttons:control(6163):click()
studio.view:drag(5, 250, 400, 260)
g.shot("04-ruler", "view")
buttons:control(6163):click()
buttons:control(6159):click()
studio.undo()

-- In the middle of every screen
g.tab(0)
local list = studio.page("CDlgGuiManager"):control(6340)
list:click_cell(1, 1)
list:click_cell(0, 1)
list:select(1)
assert(studio.selection().dialog == g.dialog("Welcome"))
buttons:control(6549):click()
buttons:control(6516):click()
studio.page("CDlgPropDialog"):control(6488):click()
assert(g.dialog("Welcome"):get("x") == (760 - 380) // 2)
local start = g.control("Start")
studio.view:click(g.place(start))
studio.page("CChildCtrlDimension"):unfold()
studio.page("CChildCtrlDimension"):control(6502):click()
studio.page("CChildCtrlDimension"):fold()
g.save()

local view, size = g.lang("视图", "View"), g.lang("屏幕尺寸", "Screen Size")
studio.menu(view, size, g.lang("390 × 844  手机竖屏", "390 × 844  Phone, portrait"))
g.shot("04-phone", "view")
studio.menu(view, size, g.lang("与视图相同", "As the View"))
