-- Edits at random until the program is killed. Every other edit names a dialog after its number. Arguments: the file that
-- edits are counted in, the seed, and the package to open first, if any.
local log = assert(io.open(studio.args[1], "a"))
math.randomseed(tonumber(studio.args[2]))
if studio.args[3] then
    studio.open(studio.args[3])
end
local counter = studio.create_dialog{name = "edit 0", x = 1, y = 2, w = 300, h = 200}
local controls = {}

local function some()
    return controls[math.random(#controls)]
end
local others = {
    function() controls[#controls + 1] = studio.create_control{dialog = counter, type = 0, x = 5, y = 5, w = 50, h = 20} end,
    function() some():set("x", math.random(200)) end,
    function() some():set("name", "name " .. math.random(1000)) end,
    function() counter:set("caption", ("caption "):rep(math.random(20))) end,
}
others[1]()

local edits = 2
while true do
    edits = edits + 1
    if edits % 2 == 0 then
        counter:set("name", "edit " .. edits)
    else
        others[math.random(#others)]()
    end
    log:write(edits, "\n")
    log:flush()
    if math.random(3) == 1 then
        studio.wait(math.random(3))
    end
end
