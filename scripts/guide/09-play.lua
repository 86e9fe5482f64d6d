package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local g = require("guide")

g.open()
studio.menu(g.lang("视图", "View"), g.lang("事件日志", "Event Log"))
studio.resize(760, 420)
studio.play(true)
g.click("Start")
g.click("Player")
for letter in ("MARA"):gmatch(".") do
    studio.view:key(letter)
end
g.click("Start")
studio.wait(1200)
g.shot("09-preview")
studio.play(false)
