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
studio.answer(g.lang("旅店", "Inn"))
styles:control(6066):click()
g.shot("12-styles")

-- One button that differs
g.tab(0)
studio.view:click(g.place(g.control("Start")))
local own = studio.page("CDlgElementCustomize")
own:unfold()
own:control(6629):set_value(18)
own:control(6630):set_checked(true)
own:control(1):click()
assert(g.control("Start"):get("font_size") == 18)
g.shot("12-own", "CDlgPropControl", "230x520+0+0")
own:fold()
g.save()
