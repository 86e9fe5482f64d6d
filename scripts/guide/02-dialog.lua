package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local g = require("guide")

studio.resize(760, 500)
studio.new()
g.tab(0)
studio.page("CDlgGuiManager"):control(6315):click()
studio.view:drag(190, 100, 570, 350)
g.type("CDlgPropDialog", 6018, "Welcome")
g.type("CDlgPropDialog", 6362, g.lang("港口旅店", "The Harbour Inn"))
g.shot("02-drawn")

g.draw(6344, "Question", 210, 150, 550, 176)
g.type("CDlgPropStatic", 6352, g.lang("请问尊姓大名？", "What is your name?"))
g.draw(6334, "Player", 210, 186, 550, 214)
g.type("CDlgPropEdit", 6379, "")
g.type("CDlgPropEdit", 6888, g.lang("在这里输入", "Type here"))
g.draw(6328, "Start", 430, 300, 550, 332)
g.type("CDlgPropButton", 6352, g.lang("进门", "Come in"))
g.shot("02-button", "CDlgPropControl")
g.save()

studio.play(true)
g.click("Player")
for letter in ("MARA"):gmatch(".") do
    studio.view:key(letter)
end
g.shot("02-preview", "view")
assert(g.control("Player"):shown("text") == "mara")
studio.play(false)
assert(g.control("Player"):get("text") == "")
