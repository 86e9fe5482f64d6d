-- A settings form built from nothing by an author's clicks: sliders that tell their value, a combo box, an edit box, OK and
-- Cancel with scripts; then used as its user would.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.new()
studio.resize(1280, 720)
local view = studio.view
local at_start = t.scene_bytes()
local tabs = studio.page("CDlgTopTable"):control(6000)

tabs:choose(0)
studio.page("CDlgGuiManager"):control(6315):click()
view:drag(300, 100, 800, 600)
local home = studio.selection().dialog
tabs:choose(1)
local types = studio.page("CDlgGuiManagerCtrl")
local common = studio.page("CDlgPropControl")

-- Draws a control of the type whose button is given, and names it.
local function draw(button, name, x, y, w, h)
    types:control(button):click()
    view:drag(300 + x, 100 + y, 300 + x + w, 100 + y + h)
    local made = studio.selection().control
    t.same(made:get("dialog"), home, "the dialog of " .. name)
    common:control(6396):set_text(name)
    common:control(6396):blur()
    return made
end

local function script(page, button, source)
    studio.answer(function(editor)
        editor:control(6601):set_text(source)
        editor:control(1):click()
    end)
    studio.page(page):control(button):click()
end

-- Sliders, each with a text that tells its value
local texts, sliders = {}, {}
for i, name in ipairs({"Volume", "Brightness"}) do
    texts[i] = draw(6344, name .. " text", 40, 60 * i, 60, 24)
    studio.page("CDlgPropStatic"):control(6352):set_text("5")
    sliders[i] = draw(6342, name, 120, 60 * i, 200, 24)
    local page = studio.page("CDlgPropSlider")
    page:control(6358):set_value(10)
    page:control(6358):blur()
    page:control(6381):set_value(5)
    page:control(6381):blur()
    t.same({sliders[i]:get("min"), sliders[i]:get("value"), sliders[i]:get("max")}, {0, 5, 10}, "the range of " .. name)
    script("CDlgPropSlider", 6520,
           'local slider, _, value = ...\ncontrol(slider.name .. " text").text = tostring(value)')
end

-- A combo box with three items
local quality = draw(6336, "Quality", 120, 180, 200, 28)
local combo = studio.page("CDlgPropCombo")
for _, item in ipairs({"High", "Low", "Medium"}) do
    combo:control(6540):click()
    combo:control(6395):set_text(item)
    combo:control(6395):blur()
end
t.same(combo:control(6538):items(), {"High", "Low", "Medium"}, "the items on the page")
combo:control(6893):click()
combo:control(6538):choose(0)
combo:control(6894):click()
combo:control(6894):click()
combo:control(6538):choose(1)
t.same({quality:get("items"), quality:get("selected")}, {{"Medium", "Low", "High"}, 1}, "the items")

-- An edit box
local player = draw(6334, "Player", 120, 240, 200, 28)
local edit = studio.page("CDlgPropEdit")
edit:control(6379):set_text("")
edit:control(6379):blur()
edit:control(6888):set_text(t.lang("你的名字", "Your name"))
edit:control(6888):blur()
edit:control(6884):set_value(8)
edit:control(6884):blur()
t.same({player:get("max_length"), #player:get("placeholder") > 0}, {8, true}, "the edit box")

-- OK and Cancel
local log = draw(6354, "Log", 40, 300, 300, 90)
local ok = draw(6328, "OK", 120, 410, 90, 28)
local buttons = studio.page("CDlgPropButton")
buttons:control(6352):set_text(t.lang("确定", "OK"))
script("CDlgPropButton", 6520, [[
local items = control("Quality").items
control("Log"):add_line(control("Volume").value .. " " .. items[control("Quality").selected + 1] .. " " .. control("Player").text)
]])
local cancel = draw(6328, "Cancel", 230, 410, 90, 28)
buttons:control(6352):set_text(t.lang("取消", "Cancel"))
script("CDlgPropButton", 6520, 'control("Volume").value = 5\ncontrol("Player").text = ""\ncontrol("Log"):add_line("cancelled")')
t.same({#studio.controls(), #studio.events()}, {9, 4}, "the form")

-- Its user
local function middle(c, share)
    local top = home:get("caption_shown") and home:get("caption_height") or 0
    return home:get("x") + c:get("x") + c:get("width") * (share or 0.5),
           home:get("y") + top + c:get("y") + c:get("height") / 2
end
local authored = t.scene_bytes()
studio.play(true)
view:click(middle(sliders[1], 0.99))
t.same({sliders[1]:shown("value"), texts[1]:shown("text"), texts[2]:shown("text")}, {10, "10", "5"}, "the slider tells")
view:click(middle(player))
for letter in ("ADALOVELACE"):gmatch(".") do
    view:key(letter)
end
t.same(player:shown("text"):upper(), "ADALOVEL", "no more than eight characters")
view:click(middle(quality))
view:key("Down")
view:key("Return")
view:click(middle(ok))
t.same(log:shown("lines"), {"10 High " .. player:shown("text")}, "OK")
studio.screenshot(t.temporary("settings.png"), "view")
view:click(middle(cancel))
t.same({log:shown("lines")[2], sliders[1]:shown("value"), player:shown("text")}, {"cancelled", 5, ""}, "Cancel")
studio.play(false)
t.same(t.scene_bytes() == authored, true, "nothing is left of the preview")

-- Kept, and undone
local file = t.temporary("settings.tarn")
t.same(studio.save(file), true, "saving")
t.same(t.repeat_all(studio.undo) > 10, true, "steps")
t.same(t.scene_bytes() == at_start, false, "scripts are no steps")
t.same(#studio.dialogs(), 0, "everything is undone")
t.same(t.repeat_all(studio.redo) > 10, true, "steps again")
t.same(t.scene_bytes() == authored, true, "everything is back")
studio.open(file)
t.same({#studio.controls(), #studio.events(), #studio.functions()}, {9, 4, 4}, "read again")
t.same(studio.pending(), 0, "every box was answered")
