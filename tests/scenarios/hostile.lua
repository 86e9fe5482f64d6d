-- Broken files: each shows one box and leaves the scene as it was.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.open(t.sample("hud.tarn"))
studio.select(studio.dialogs()[5])
local before, names = t.scene_bytes(), t.names(studio.dialogs())
local whole = t.read(t.sample("hud.tarn"))
local middle = #whole // 2

local function flipped(place)
    return whole:sub(1, place - 1) .. string.char(whole:byte(place) ~ 0x55) .. whole:sub(place + 1)
end

local files = {
    missing = t.temporary("there is no such file.tarn"),
    folder = t.temp,
    empty = t.write(t.temporary("empty.tarn"), ""),
    text = t.write(t.temporary("text.tarn"), "this is no package"),
    half = t.write(t.temporary("half.tarn"), whole:sub(1, middle)),
    no_end = t.write(t.temporary("no_end.tarn"), whole:sub(1, -2)),
    no_start = t.write(t.temporary("no_start.tarn"), whole:sub(200)),
    no_entries = t.write(t.temporary("no_entries.tarn"), "PK\5\6" .. ("\0"):rep(18)),
    changed = t.write(t.temporary("changed.tarn"), flipped(60)),
    padded = t.write(t.temporary("padded.tarn"), "PK\3\4" .. ("\255"):rep(100000)),
}

local function unharmed(what)
    local boxes = studio.boxes()
    t.same(#boxes, 1, "boxes of " .. what)
    t.same({boxes[1].kind, boxes[1].buttons}, {"message", {"ok"}}, "box of " .. what)
    t.same(#boxes[1].text > 0, true, "the text of the box of " .. what)
    t.same(t.names(studio.dialogs()), names, "dialogs after " .. what)
    t.same(studio.selection().dialog, studio.dialogs()[5], "current dialog after " .. what)
    t.same(studio.pending(), 0, "answers left over by " .. what)
end

studio.boxes()
for what, path in pairs(files) do
    studio.answer("ok")
    t.same(studio.open(path), false, "opening " .. what)
    unharmed(what)
end
t.same(t.scene_bytes() == before, true, "the scene is saved as before")
t.same(studio.undo(), false, "nothing of this can be undone")

-- The page's own ways to a file are as careful.
local page = studio.page("CDlgGuiManager")
for what, path in pairs(files) do
    studio.answer("ok", path, "ok")
    page:control(6016):click()
    local boxes = studio.boxes()
    t.same({#boxes, #(boxes[3] or {text = ""}).text > 0}, {3, true}, "boxes of importing " .. what)
    studio.answer(path, "ok")
    page:control(6017):click()
    t.same(#studio.boxes(), 2, "boxes of merging " .. what)
    t.same(t.names(studio.dialogs()), names, "dialogs after importing and merging " .. what)
end
t.same(t.scene_bytes() == before, true, "the scene is still saved as before")
t.same(studio.undo(), false, "nothing of this can be undone either")

-- A place that cannot be written to
studio.answer("ok")
t.same(studio.save(t.temporary("no folder/scene.tarn")), false, "saving into a missing folder")
unharmed("saving into a missing folder")
