package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local g = require("guide")

-- What a command prints, and its status.
local function run(line)
    local pipe = assert(io.popen(('cd "%s" && tarn-studio --lang %s %s 2>&1'):format(g.work, studio.language(), line)))
    local text = pipe:read("a")
    local _, _, status = pipe:close()
    return text, status or 0
end

-- Two versions: one person changes a caption, another one moves a button.
for _, name in ipairs({"base", "ours", "theirs"}) do
    g.open()
    if name == "ours" then
        g.dialog("Welcome"):set("caption", g.lang("欢迎光临", "Welcome"))
    elseif name == "theirs" then
        g.control("Start"):set("y", g.control("Start"):get("y") - 4)
        studio.set_function_text("broken", "if then")
    end
    g.save(name)
end
-- Checked, also on a screen that is too small
local warning = g.lang("警告: Volume: 控件在屏幕之外（240x300）", "warning: Volume: The control is off the screen (240x300)")
assert(select(2, run("--check base.tarn")) == 0 and run("--check base.tarn --over-time") == "")
g.open()
g.dialog("Settings"):set("visible", true)
g.save("shown")
assert(run("--check shown.tarn --size 240x300"):find(warning, 1, true))
assert(select(2, run("--check theirs.tarn")) == 1, "a function that does not compile is an error")

-- Compared, merged, unpacked and packed again
assert(select(2, run("diff base.tarn theirs.tarn")) == 1)
assert(select(2, run("merge base.tarn ours.tarn theirs.tarn -o both.tarn")) == 0)
assert(not run("diff theirs.tarn both.tarn"):find("Start"), "their button is in it")
assert(not run("diff ours.tarn both.tarn"):find("caption"), "and our title")
run("--unpack base.tarn base")
run("--pack base again.tarn")
assert(os.execute(('cmp "%s/base.tarn" "%s/again.tarn"'):format(g.work, g.work)))
assert(select(2, run("--render phone.png --screen 390x844 --size 390x844 both.tarn")) == 0)
assert(select(2, run("--render arrive.png --timebar Arrive --time 0..1.5 --fps 10 both.tarn")) == 0)
assert(io.open(g.work .. "/arrive-0015.png"), "a picture for each frame")

-- The reader's own script
local path = g.work .. "/walk.lua"
local file = assert(io.open(path, "w"))
file:write(g.code("15-teams", 1))
file:close()
assert(select(2, run("--script walk.lua inn.tarn")) == 0)

assert(os.rename(g.work .. "/phone.png", g.work .. "/pictures/15-phone@390x420+0+210.png"))
