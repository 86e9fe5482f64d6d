-- Run with a limit on the size of files: a save that passes it says so, and the program goes on.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

local file = t.temporary("limited.tarn")
studio.open(t.sample("tiny.tarn"))
t.same(studio.save(file), true, "below the limit")
local whole = t.read(file)
for i = 1, 3000 do
    studio.create_dialog{name = ("%x"):format(i * 2654435761 % 2 ^ 32), x = i * 7919 % 1000, y = i * 104729 % 700, w = 30, h = 40}
end
studio.boxes()
studio.answer("ok")
t.same(studio.save(file), false, "above the limit")
t.same(#studio.boxes(), 1, "the failure is told")
t.same(t.read(file), whole, "the old file")
