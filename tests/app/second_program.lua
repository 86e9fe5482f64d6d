-- Meets a file that another program has open.
local path, other = studio.args[1], studio.args[2]
studio.answer("cancel")
assert(not studio.open(path), "opened all the same")
studio.answer("ok")
assert(studio.open(path), "no copy was opened")
studio.create_dialog{name = "Mine", x = 1, y = 2, w = 30, h = 40}
studio.answer("cancel")
assert(not studio.save(path), "overwritten unasked")
studio.answer("no", other)
assert(studio.save(path), "not saved under another name")
for _, box in ipairs(studio.boxes()) do
    print(box.text)
end

-- Somebody else writes its own file.
local file = assert(io.open(other, "a"))
file:write("more")
file:close()
studio.answer("cancel")
assert(not studio.save(other), "overwritten unasked")
studio.answer("yes")
assert(studio.save(other), "not overwritten")
assert(studio.boxes()[2].text:find("somebody else"))
assert(studio.save(other), "asked although nobody wrote it")
