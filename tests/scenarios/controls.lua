-- The list of controls: drawing one, filters, selecting rows, layers, another dialog, hiding and removing, all undone.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

local id, name, kind, home, layer = 1, 2, 3, 4, 5 -- columns

studio.resize(1280, 720)
t.same(studio.open(t.sample("hud.tarn")), true, "opening the sample")
studio.page("CDlgTopTable"):control(6000):choose(1)
local page = studio.page("CDlgGuiManagerCtrl")
local list, by_dialog, by_type = page:control(6316), page:control(6548), page:control(6551)
local remove, switch = page:control(6338), page:control(6370)
local set_top, set_bottom, move_up, move_down
    = page:control(6322), page:control(6106), page:control(6588), page:control(6108)
local row_buttons = {remove, set_top, set_bottom, move_up, move_down, switch}
local at_start = t.scene_bytes()
local count = #studio.controls()

local function column(number)
    local texts = {}
    for i, row in ipairs(list:rows()) do
        texts[i] = row[number]
    end
    return texts
end

local function usable(expected, what)
    for _, button in ipairs(row_buttons) do
        t.same(button:enabled(), expected, what)
    end
end

t.same(#list:rows(), count, "rows of the list")
t.same(list:columns(), {"ID", t.lang("名称", "Name"), t.lang("类型", "Type"), t.lang("所属窗口", "Dialog"),
                        t.lang("图层顺序", "Layer")}, "columns")
t.same({#by_dialog:items(), by_dialog:items()[1], by_dialog:items()[2]}, {#studio.dialogs() + 2, "---ALL---",
                                                                          "---ROOT---"}, "entries of dialogs")
t.same({#by_type:items(), by_type:items()[6]}, {21, t.lang("组合下拉框", "Combo Box")}, "entries of types")
usable(false, "buttons without a row")

-- Drawing a control into a dialog of its own
local workshop = studio.create_dialog{name = "工坊 Workshop", x = 300, y = 150, w = 400, h = 300}
for i = 1, 9 do
    studio.create_control{type = 0, dialog = workshop, name = "tool " .. i, x = 10, y = 30 * i, w = 80, h = 24}
end
studio.broadcast(70000)
page:control(6328):click()
page:control(6330):click()
t.same({page:control(6328):checked(), page:control(6330):checked()}, {false, true}, "one type is armed")
studio.view:drag(500, 300, 620, 324)
t.same(page:control(6330):checked(), false, "drawing releases the button")
local drawn = studio.selection().control
t.same({drawn:type(), drawn:get("dialog"), #list:rows()}, {"CDXUTCheckBox", workshop, count + 10}, "the drawn control")
t.same(list:selected(), {count + 9}, "its row is selected")
usable(true, "buttons with a row")

-- Filters
by_dialog:choose(#studio.dialogs() + 1)
t.same(#list:rows(), 10, "rows of the workshop")
t.same(column(home)[1], "工坊 Workshop", "their dialog")
t.same(column(layer)[10], "10", "their layers have two digits")
by_type:choose(2 + 1)
t.same(column(kind), {t.lang("复选框", "Check Box")}, "its check boxes")
studio.broadcast(70000)
t.same({#list:rows(), by_dialog:index()}, {1, #studio.dialogs() - 1}, "the filter outlives a refresh")
by_type:choose(0)
t.same(#list:rows(), 10, "rows of the workshop again")

-- Selecting rows
studio.codes()
list:select(5, 1, 3)
t.same(t.names(studio.selection().controls), {"tool 2", "tool 4", "tool 6"}, "controls in the order of the rows")
t.same(studio.selection().control:get("name"), "tool 4", "the row that was clicked last is current")
t.same(studio.codes(), {70004, 70004, 70004}, "codes of three clicks")
t.same(studio.property_page(), "CDlgPropControl", "the property page follows")

-- Layers: the lowest of the selected rows moves, and the list is sorted by them.
set_top:click()
t.same({column(name)[10], column(layer)[10]}, {"tool 6", "10"}, "on top")
move_down:click()
t.same(column(name)[9], "tool 6", "one down")
move_up:click()
t.same(column(name)[10], "tool 6", "one up")
set_bottom:click()
t.same({column(name)[1], column(layer)[1]}, {"tool 6", "01"}, "at the bottom")
t.same(studio.codes(), {70005, 70005, 70005, 70005}, "codes of moving layers")

-- Showing and hiding
list:click_cell(0, 2)
t.same({list:icons()[1], studio.selection().control:get("visible")}, {99, false}, "a hidden control has no icon")
list:click_cell(0, 0)
t.same(list:icons()[1], 99, "a click on the number only selects")
list:click_cell(0, 4)
t.same({list:icons()[1], studio.selection().control:get("visible")}, {0, true}, "it is shown again")

-- What the selected controls have in common
list:select(0, 1, 2)
local page_of_controls = studio.page("CDlgPropControl")
local chosen = studio.selection().controls
studio.codes()
page_of_controls:control(6396):set_text("工具 👩‍🚀 أداة")
t.same(t.names(chosen), {"工具 👩‍🚀 أداة", "工具 👩‍🚀 أداة", "工具 👩‍🚀 أداة"}, "three renamed at once")
t.same(column(name)[2], "工具 👩‍🚀 أداة", "the list shows the new name")
page_of_controls:control(6355):click()
t.same({chosen[1]:get("locked"), chosen[2]:get("locked"), chosen[3]:get("locked")}, {true, true, true}, "locked")
t.same(studio.codes(), {70003, 70003}, "codes of renaming and locking")
local swatch = page_of_controls:control(6199)
studio.answer(function(picker)
    for number, value in pairs{[6411] = 128, [6397] = 255, [6401] = 0, [6405] = 12.9} do
        picker:control(number):set_value(value)
    end
    t.same(picker:control(6464):color(), 0x80ff000c, "the picker's swatch")
    picker:control(1):click()
end)
swatch:click()
t.same({swatch:color(), chosen[1]:get("color_tag"), chosen[3]:get("color_tag")}, {0x80ff000c, 0x80ff000c, 0x80ff000c},
       "all recoloured")
local location = studio.page("CChildCtrlDimension")
location:unfold()
location:control(6026):set_text("77")
t.same({chosen[1]:get("width"), chosen[2]:get("width"), chosen[3]:get("width")}, {77, 77, 77}, "one width for all")
location:fold()

-- Another dialog
list:select(0, 2)
studio.codes()
studio.boxes()
studio.answer(0)
switch:click()
local menu = studio.boxes()[1]
t.same({menu.kind, menu.items[1].id, menu.items[1].text}, {"menu", 100, studio.root_dialog():get("name")}, "the menu")
t.same({menu.items[#menu.items].id, menu.items[#menu.items].text},
       {100 + #studio.dialogs(), "工坊 Workshop"}, "its last entry")
t.same(#studio.controls(workshop), 10, "nothing was chosen")
studio.answer(100)
switch:click()
t.same(#studio.controls(workshop), 8, "two controls left the workshop")
for _, control in ipairs(studio.selection().controls) do
    t.same(control:get("dialog"), studio.root_dialog(), "they are in the root dialog")
end
t.same(studio.codes(), {}, "codes of switching the dialog")

-- Removing
by_dialog:choose(0)
list:select(0, 1, 2)
studio.boxes()
studio.answer("cancel")
remove:click()
t.same(#studio.controls(), count + 10, "controls after a cancelled removal")
studio.answer("ok")
remove:click()
t.same(#studio.controls(), count + 7, "controls after the removal")
t.same(studio.codes(), {70004, 70004, 70004, 70002}, "codes of selecting and removing")
local question = t.lang("你正在删除你的控件!", "Ensure delete control?")
t.same(t.boxes(), {{"message", question, "cancel"}, {"message", question, "ok"}}, "the questions")
usable(false, "buttons after the removal")

-- All of it undone and redone
local at_end = t.scene_bytes()
local steps = t.repeat_all(studio.undo)
t.same(t.scene_bytes() == at_start, true, "the scene after undoing everything")
t.same(#list:rows(), count, "rows after undoing everything")
t.same(t.repeat_all(studio.redo), steps, "steps redone")
t.same(t.scene_bytes() == at_end, true, "the scene after redoing everything")
