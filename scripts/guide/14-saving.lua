package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local g = require("guide")
local script, part = debug.getinfo(1, "S").source:sub(2), studio.args[3]

-- Of a program that is killed, and of the next one, which finds what it had not saved.
if part == "killed" then
    g.open()
    g.dialog("Hall"):set("caption", "Lost?")
    local line = g.control("Question")
    for i = 1, 30 do
        studio.select(line)
        g.type("CDlgPropStatic", 6352, "edit " .. i)
        studio.select(g.control("Start"))
    end
    studio.wait(2000)
    os.execute("kill -9 $PPID")
elseif part == "next" then
    studio.answer("yes")
    assert(studio.recover(), "what was not saved is offered")
    assert(g.control("Question"):get("text"):find("^edit"), "and there")
    return
end

local function start(which)
    return os.execute(('tarn-studio --lang %s --recovery --script "%s" "%s" "%s" %s'):format(studio.language(), script,
                                                                                           g.work, g.samples, which))
end
start("killed")
assert(start("next"))

-- What is broken is listed, and a click leads there
g.open()
studio.menu(g.lang("视图", "View"), g.lang("问题", "Problems"))
studio.resize(760, 420)
local lantern = g.control("Lantern")
lantern:set("image", "lost.png")
studio.broadcast(70003)
studio.wait(500)
assert(#studio.problems() == 1)
g.shot("14-problems")
studio.undo()
studio.wait(500)
assert(#studio.problems() == 0)

-- The steps
studio.menu(g.lang("视图", "View"), g.lang("历史记录", "History"))
g.tab(0)
studio.view:click(g.place(g.control("Start")))
studio.view:key("Right")
g.type("CDlgPropButton", 6352, g.lang("请进", "Do come in"))
g.shot("14-history", "CDlgHistory")
