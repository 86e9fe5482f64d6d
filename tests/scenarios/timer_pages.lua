-- The pages of a timebar: a script object with three variables that drives a label in a preview, and script keys.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.new()
studio.resize(1280, 1000)
studio.create_control{type = 1, dialog = studio.root_dialog(), name = "Status", x = 20, y = 20, w = 300, h = 30}
local label = studio.controls(studio.root_dialog())[1]
studio.set_function_text("show_stats", [[
local life, mana, gold = ...
control("Status").text = string.format("%.0f/%.0f/%.0f", life, mana, gold)]])
studio.mode("Timebar")
local bar = studio.create_timebar{name = "Stats", total_length = 4}
studio.broadcast(70008)

-- Seconds and frames
local header, page, keys = studio.page("CDlgPropTimer"), studio.page("CDlgPropTimerAnimation"), studio.page("CDlgPropTimerScript")
local function choose(control, row)
    control:click_cell(row, 0)
end
t.same(header:control(6177):text(), t.lang("4.0秒", "4.0S"), "length in seconds")
page:control(6229):click()
t.same(studio.codes()[#studio.codes()] or 70008, 70008, "code of the mode")
t.same(header:control(6177):text(), t.lang("100帧", "100Frame"), "length in frames")
studio.answer("50")
header:control(6177):click()
t.same(bar:get("total_length"), 2, "50 frames are two seconds")
page:control(6228):click()
t.same(header:control(6177):text(), t.lang("2.0秒", "2.0S"), "and in seconds")
header:control(6396):set_text("Counters")
header:control(6396):enter()
t.same(bar:get("name"), "Counters", "the name is entered")
header:control(6601):set_checked(true)

-- A script object whose command is put together in its editor
page:control(6190):click()
page:control(6193):set_text("show_stats(life")
studio.boxes()
studio.answer(function(editor)
    t.same(editor:control(6947):index() >= 0, true, "what is called is found")
    t.same(editor:control(6960):text(), "life", "a field is called like the function's parameter")
    editor:control(6970):set_text("life")
    editor:control(6971):set_text("mana * (")
    studio.answer("ok")
    editor:control(1):click()
    t.same(editor:control(6952):text(), "show_stats(life, mana * ()", "refused and still there")
    editor:control(6971):set_text("mana")
    editor:control(6972):set_text("gold + 1")
    editor:control(1):click()
end)
page:control(6192):click()
t.same(page:control(6193):text(), "show_stats(life, mana, gold + 1)", "the command")
local variables = page:control(6186)
t.same(variables:rows(), {{"life", "FLOAT", "0"}, {"mana", "FLOAT", "0"}, {"gold", "FLOAT", "0"}}, "its variables")

-- Variables with values of their own: one of the three is made anew as a whole number.
choose(variables, 2)
page:control(6189):click()
studio.answer(32789, "7")
page:control(6188):click()
t.same(variables:rows()[3], {"Var1", "INT", "1"}, "a new variable has its first key")
page:control(6941):set_text("gold")
page:control(6941):enter()
t.same(variables:rows()[3], {"gold", "INT", "1"}, "it has a name")
t.same(page:control(6193):text(), "show_stats(life, mana, gold + 1)", "the command stays")

-- The preview
studio.play(true)
studio.wait(200)
t.same(label:shown("text"), "0/0/8", "the label tells the variables")
studio.play(false)
t.same(label:get("text") == "0/0/8", false, "and is as it was authored")

-- Script keys
keys:unfold()
local list = keys:control(6567)
studio.answer("1.5", function(editor)
    editor:control(6601):set_text('control("Status").text = "key"')
    editor:control(1):click()
end)
keys:control(6184):click()
t.same(list:rows(), {{t.lang("1.50秒", "1.50Sec")}}, "a key")
local name = "TIMER_FUNC_"
local made
for _, each in ipairs(studio.functions()) do
    made = each:find(name, 1, true) and each or made
end
t.same(studio.function_text(made), 'control("Status").text = "key"', "its script")
studio.answer("3", "ok")
keys:control(6183):click()
t.same({bar:script_keys(), bar:get("total_length")}, {{3}, 3}, "moved, and the bar is longer")
studio.undo()
t.same({bar:script_keys(), bar:get("total_length"), list:rows()}, {{1.5}, 2, {{t.lang("1.50秒", "1.50Sec")}}}, "one step")

-- A function that is deleted is offered again; without it the key goes.
studio.delete_function(made)
studio.answer("ok", function(editor) editor:control(1):click() end)
keys:control(6182):click()
t.same(studio.function_text(made), "", "a new one")
studio.delete_function(made)
studio.answer("cancel")
keys:control(6182):click()
t.same(list:rows(), {}, "the key is gone")
print("ok")
