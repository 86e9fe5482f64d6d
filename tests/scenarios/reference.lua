-- docs/automation.md and what scripts find are the same.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.resize(1280, 720)
local here = debug.getinfo(1, "S").source:match("^@(.*)/")
local text = t.read(here .. "/../../docs/automation.md")

local function methods(handle)
    local index = debug.getmetatable(handle).__index
    -- Objects have members beside their methods, found by a function that holds these.
    return type(index) == "table" and index or select(2, debug.getupvalue(index, 1))
end
local tables = {
    studio = studio,
    page = methods(studio.page("CDlgTopTable")),
    c = methods(studio.page("CDlgTopTable"):control(6000)),
    s = methods(studio.view),
    object = methods(studio.root_dialog()),
}
-- What the manual calls objects of one kind.
local names = {menu = "object", bar = "object", obj = "object", var = "object"}

local told = {}
for whose, mark, name in text:gmatch("`?(%a+)([.:])([%a_]+)") do
    whose = names[whose] or whose
    if (whose == "studio" and mark == ".") or (tables[whose] and mark == ":" and whose ~= "studio") then
        told[whose .. mark .. name] = true
        t.same(tables[whose][name] ~= nil, true, "what the manual tells of " .. whose .. mark .. name)
    end
end
for whose, functions in pairs(tables) do
    for name in pairs(functions) do
        local call = whose .. (whose == "studio" and "." or ":") .. name
        t.same(told[call], true, "the manual's word on " .. call)
    end
end
