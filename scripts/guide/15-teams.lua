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
for _, line in ipairs({"--check base.tarn --size 390x844", "--check theirs.tarn", "--check base.tarn --over-time", "--unpack base.tarn base",
                       "--pack base again.tarn", "diff base.tarn ours.tarn", "diff base.tarn theirs.tarn", "merge base.tarn ours.tarn theirs.tarn -o both.tarn", "diff base.tarn both.tarn",
                       "--render phone.png --screen 390x844 --size 390x844 both.tarn",
                       "--render arrive.png --timebar Arrive --time 0..1.5 --fps 10 both.tarn"}) do
    print(line)
    print(run(line))
end
assert(os.execute(('cmp "%s/base.tarn" "%s/again.tarn"'):format(g.work, g.work)))

-- The reader's own script
local path = g.work .. "/walk.lua"
local file = assert(io.open(path, "w"))
file:write(g.code("15-teams", 1))
file:close()
print(run("--script walk.lua inn.tarn"))

assert(os.rename(g.work .. "/phone.png", g.work .. "/pictures/15-phone.png"))
