-- The interface runs: every event calls its function, the log tells it, and nothing is left of the preview.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.resize(1280, 720)
t.same(studio.open(t.sample("events.tarn")), true, "opening the sample")
local authored = t.scene_bytes()
local home, panel = studio.dialogs()[1], studio.dialogs()[2]

-- Where a control is on the screen: its middle, or as many pixels from its corner.
local function place(name, dx, dy)
    local c = t.find(studio.controls(), name)
    local d = c:shown("dialog")
    local x, y = d:shown("x"), d:shown("y") + (d:shown("caption_shown") and d:shown("caption_height") or 0)
    return x + c:shown("x") + (dx or c:shown("width") / 2), y + c:shown("y") + (dy or c:shown("height") / 2)
end

local function click(name, dx, dy)
    studio.view:click(place(name, dx, dy))
end

-- The results of the log's rows that came since the last call.
local seen = 0
local function results()
    studio.wait(100)
    local list = {}
    local rows = studio.page("CDlgEventLog"):control(7011):rows()
    for i = seen + 1, #rows do
        list[#list + 1] = rows[i][5]
    end
    seen = #rows
    return list
end

local function heard(expected, what)
    local list = results()
    for _, wanted in ipairs(expected) do
        local found = false
        for _, each in ipairs(list) do
            found = found or each == wanted
        end
        if not found then
            error(what .. ": no " .. wanted .. " among " .. table.concat(list, "; "), 2)
        end
    end
end

t.same(#studio.events() > 20, true, "events of the sample")
t.same(studio.functions()[1] ~= nil, true, "functions of the sample")
studio.menu(t.lang("视图", "View"), t.lang("事件日志", "Event Log"))
studio.play(true)
click("Button")
heard({"Button MouseEnter", "Button LeftDown", "Button LeftUp", "Button Click"}, "button")
t.same(t.find(studio.controls(), "Button"):shown("text"), "按钮 Button 1", "the function changes the button")
click("ImageButton")
heard({"Button MouseLeave", "ImageButton MouseEnter", "ImageButton LeftDown", "ImageButton LeftUp", "ImageButton Click"},
      "image button")
click("Check", 10)
click("Check", 10)
heard({"Check CheckClick true", "Check CheckOn true", "Check CheckClick false", "Check CheckOff false"}, "check box")
click("Hard", 10)
heard({"Hard RadioClick true", "Easy RadioOff false", "Hard RadioOn true"}, "radio buttons")
click("Slider", 140)
results()
t.same(t.find(studio.controls(), "Bar"):shown("percent"), t.find(studio.controls(), "Slider"):shown("value"),
       "the bar follows the slider")
studio.view:key("Home")
heard({"Slider SliderDrag 0"}, "slider")
click("Combo")
studio.view:key("Down")
studio.view:key("Escape")
heard({"Combo ComboSelectionChanged 1"}, "combo box")
click("Edit")
studio.view:key("A")
studio.view:key("Return")
heard({"Edit EditEnter a"}, "edit box")
local x, y = place("List", 40, 40)
studio.view:double_click(x, y)
heard({"List ListClick 1", "List ListDoubleClick 1"}, "list box")
click("Scroll", 10, 100)
heard({"Scroll ScrollChanged 10"}, "scroll bar")
local px, py = panel:shown("x"), panel:shown("y")
studio.view:drag(px + 60, py + 12, px + 90, py + 12)
heard({"Panel Move"}, "moving a dialog")
local right = panel:shown("x") + panel:shown("width")
-- The buttons stand at the right end of the caption bar: close, and minimise before it.
studio.view:click(right - 34, py + 12)
studio.view:click(right - 34, py + 12)
heard({"Panel Minimize", "Panel Restore"}, "minimising")
studio.view:click(right - 12, py + 12)
heard({"Panel Close"}, "closing")
t.same(panel:shown("visible"), false, "the dialog is closed")
click("Button")
click("Button")
t.same(panel:shown("visible"), true, "a function brings it back")
t.same(#t.find(studio.controls(), "Log"):shown("lines") > 20, true, "lines of the info box")

-- None of its keys reaches the editor.
studio.view:key("Delete")
studio.view:key("Z", "ctrl")
studio.view:key("A", "ctrl")
t.same(#studio.controls(), 13, "controls")
t.same(t.scene_bytes() == authored, true, "saving while it runs")
studio.play(false)
t.same(t.scene_bytes() == authored, true, "saving after it")
t.same(home:shown("visible"), true, "the dialog")

-- A double-click on a row of the log opens the function.
local opened
studio.answer(function(page)
    opened = page:control(6601):text()
    page:control(2):click()
end)
studio.page("CDlgEventLog"):control(7011):double_click(0)
t.same(opened, studio.function_text("note"), "the editor shows the function of the row")

-- What is broken is listed, kept by a save, and found again.
studio.set_function_text("note", (studio.function_text("note"):gsub("control", "kontrol")))
studio.play(true)
click("ImageButton")
local rows = studio.page("CDlgEventLog"):control(7011)
studio.wait(100)
t.same(rows:rows()[1][5]:find("kontrol", 1, true) ~= nil, true, "the error names what is wrong")
studio.play(false)
