-- What is selected, and where things go that are done to it: the home of a control, undo, copies of dialogs.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.resize(1280, 720)
studio.new()
local home = studio.create_dialog {x = 200, y = 100, w = 300, h = 200}
local button = studio.create_control {type = 0, dialog = home, x = 40, y = 30, w = 50, h = 20}
t.same({home:get("name"), button:get("name")}, {"Dialog1", "Button1"}, "names begin with 1")

-- A click beside the dialogs' rows leaves the current control in its dialog.
local list = studio.page("CDlgGuiManager"):control(6340)
studio.select(button)
list:select()
t.same({studio.selection().control, studio.selection().dialog}, {button, home}, "an empty click")
studio.page("CDlgTopTable"):control(6554):click()
t.same(button:get("x"), 250, "the dialog's right side")
studio.undo()

-- Undo goes back to what was selected.
studio.view:key("Right")
studio.select(home)
studio.undo()
t.same({studio.selection().controls_selected, studio.selection().control}, {true, button}, "undo selects again")
t.same(studio.property_page(), "CDlgPropControl", "and shows its page")

-- A dialog with a script is copied by keys.
studio.select(home)
studio.answer(function(editor) editor:control(2):click() end)
studio.page("CDlgPropDialogScript"):control(6426):click()
local events = #studio.events()
studio.view:key("C", "ctrl")
studio.view:key("V", "ctrl")
t.same(#studio.dialogs(), 2, "the copy")
local copy = studio.dialogs()[2]
t.same({copy:get("name"), copy:get("x"), #studio.controls(copy)}, {"Dialog2", 210, 1}, "of its own")
t.same({#studio.events(), studio.events()[events + 1].control}, {events + 1, copy}, "with a function of its own")
t.same(studio.selection().dialog, copy, "it is selected")
studio.view:key("D", "ctrl")
t.same(#studio.dialogs(), 3, "duplicated")
studio.view:key("X", "ctrl")
t.same({#studio.dialogs(), #studio.selection().dialogs}, {2, 0}, "cut without a question")
studio.undo()
t.same(studio.selection().dialog, studio.dialogs()[3], "back and selected")
studio.boxes()
studio.answer("ok")
studio.page("CDlgGuiManager"):control(6317):click()
t.same(studio.boxes()[1].title, t.lang("删除 “Dialog3”", 'Remove "Dialog3"'), "Remove names what it removes")

-- Creation is armed as long as the button says so.
local arm = studio.page("CDlgGuiManager"):control(6315)
for _, happens in ipairs {studio.undo, function() studio.view:key("Escape") end, studio.new} do
    arm:click()
    t.same(arm:checked(), true, "armed")
    happens()
    t.same(arm:checked(), false, "released")
    local count = #studio.dialogs()
    studio.view:drag(700, 500, 800, 600)
    t.same(#studio.dialogs(), count, "nothing is drawn")
end
