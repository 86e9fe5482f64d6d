-- The editor without the scene's plug-in: it starts, its pages are disabled, and files are refused with a message.
local page = studio.page("CDlgGuiManager")
for _, id in ipairs(page:ids()) do
    assert(not page:control(id):enabled(), "control " .. id .. " is enabled without a scene")
end
for _, code in ipairs { 1, 70000, 70001, 70002, 70003, 70004, 70005, 99 } do
    studio.broadcast(code)
end
studio.mode("Timebar")
studio.mode("GUI")
studio.answer("ok")
assert(not pcall(studio.open, studio.args[1] .. "/tiny.tarn") or #studio.boxes() == 1)
assert(not studio.undo() and not studio.redo())
studio.process()
print("ok")
