-- Which pages are shown, what they are told, and which buttons can be used.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.open(t.sample("hud.tarn"))
local list_page = studio.page("CDlgGuiManager")
local list = list_page:control(6340)
local tabs = studio.page("CDlgTopTable"):control(6000)
local dialog, control = studio.dialogs()[3], studio.controls()[2]

-- The selection chooses the page of the property bar.
t.same(studio.property_page(), "CDlgPropDialogAll", "page without a selection")
studio.select(control)
t.same(studio.property_page(), "CDlgPropControl", "page of a control")
studio.select(dialog)
t.same(studio.property_page(), "CDlgPropDialogAll", "page of a dialog")

-- A tab shows a page whatever is selected; the next code that chooses a page corrects that, others do not.
studio.select(control)
tabs:choose(1)
tabs:choose(0)
t.same(studio.property_page(), "CDlgPropDialogAll", "page of the first tab")
for _, code in ipairs({70003, 70001, 70005, 12345, -1}) do
    studio.broadcast(code)
    t.same(studio.property_page(), "CDlgPropDialogAll", "page after code " .. code)
end
studio.broadcast(70002)
t.same(studio.property_page(), "CDlgPropControl", "page after code 70002")

-- The tabs choose the list of the side panel too; pages behind others are not shown.
local lists = {"CDlgGuiManager", "CDlgGuiManagerCtrl", "CDlgStyleManager", "CDlgGuiMenu"}
t.same(#tabs:items(), #lists, "tabs")
for i, class in ipairs(lists) do
    tabs:choose(i - 1)
    t.same(tabs:index(), i - 1, "chosen tab")
    t.same(studio.side_page(), class, "list of tab " .. i)
    for _, other in ipairs(lists) do
        t.same(studio.page(other):visible(), other == class, other .. " is shown at tab " .. i)
    end
end
t.same(studio.property_page(), "CDlgPropMenu", "page of the menu tab")
t.same(studio.selection().menu_editing, true, "menus are edited")
studio.broadcast(70004)
t.same(studio.property_page(), "CDlgPropMenu", "selection codes leave the menu page alone")
tabs:choose(2)
studio.broadcast(70004)
t.same(studio.property_page(), "CDlgElementEditor", "the style page is left by its own actions only")
tabs:choose(0)
t.same(studio.selection().menu_editing, false, "menus are not edited any more")

-- Modes
studio.mode("Timebar")
t.same({studio.mode(), list_page:visible()}, {"Timebar", false}, "the other mode")
studio.mode("GUI")
t.same({studio.mode(), list_page:visible()}, {"GUI", true}, "the first mode again")

-- A click on a row tells of the selection once and asks for one redraw; a click beside the name for a redraw only.
studio.codes()
studio.redraws()
list:select(2)
t.same(studio.codes(), {70004}, "codes of a click on a row")
t.same(studio.redraws(), 1, "redraws of a click on a row")
t.same(studio.selection().dialog, studio.dialogs()[#studio.dialogs() - 2], "the clicked row's dialog is current")
list:click_cell(2, 1)
t.same(studio.codes(), {}, "codes of a click beside the name")
t.same(studio.redraws(), 1, "redraws of a click beside the name")

-- Without a row there is nothing to move or to remove.
local function usable()
    local states = {}
    for i, id in ipairs({6317, 6318, 6320}) do
        states[i] = list_page:control(id):enabled()
    end
    return states
end
t.same(usable(), {true, true, true}, "buttons with a row in the middle")
studio.select()
t.same(list:selected(), {}, "rows without a selection")
t.same(usable(), {false, false, false}, "buttons without a row")
list:select(#list:rows() - 1)
t.same(usable(), {true, false, true}, "buttons with the last row")
studio.new()
t.same({#list:rows(), #studio.dialogs()}, {0, 0}, "an empty scene")
t.same(usable(), {false, false, false}, "buttons of an empty list")
