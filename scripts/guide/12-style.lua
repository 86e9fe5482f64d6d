package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local g = require("guide")

g.open()
g.tab(2)
local styles, editor = studio.page("CDlgStyleManager"), studio.page("CDlgElementEditor")
local list = styles:control(6340)
for row, cells in ipairs(list:rows()) do
    if cells[1] == g.lang("酒馆", "Tavern") then
        list:select(row - 1)
    end
end
studio.answer("ok")
styles:control(6443):click()
g.shot("12-tavern", "view", "440x310+160+80")

-- One color of the palette
editor:control(6967):choose(0)
studio.answer(function(picker)
    for number, value in pairs{[6411] = 255, [6397] = 120, [6401] = 190, [6405] = 90} do
        picker:control(number):set_value(value)
    end
    picker:control(1):click()
end)
editor:control(6968):click()

-- One element in one state
studio.view:click(g.place(g.control("Start")))
assert(editor:control(6960):text() == g.lang("普通按钮", "Button"))
assert(editor:control(6961):text() == g.lang("按钮体", "Body"))
editor:control(6972):click()
editor:control(6964):choose(1)
studio.answer(function(picker)
    for number, value in pairs{[6411] = 255, [6397] = 255, [6401] = 230, [6405] = 180} do
        picker:control(number):set_value(value)
    end
    picker:control(1):click()
end)
editor:control(6963):click()
assert(editor:control(6963):color() == 0xffffe6b4)
editor:control(6971):click()

studio.answer(g.lang("旅店", "Inn"))
styles:control(6066):click()
g.shot("12-styles")

-- One button that differs
g.tab(1)
local controls = studio.page("CDlgGuiManagerCtrl"):control(6316)
for row, cells in ipairs(controls:rows()) do
    if cells[2] == "Start" then
        controls:select(row - 1)
    end
end
local own = studio.page("CDlgElementCustomize")
own:unfold()
own:control(6629):set_value(18)
own:control(6630):set_checked(true)
own:control(1):click()
assert(g.control("Start"):get("font_size") == 18)
g.shot("12-own", "CDlgPropControl", "230x520+0+0")
own:fold()
g.save()
