-- The list of controls as one works in it: searching, renaming, locking, dragging rows into other layers and dialogs.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

local name, home, layer = 2, 4, 5 -- columns
local layer_cell = 4

studio.resize(1280, 720)
studio.new()
studio.page("CDlgTopTable"):control(6000):choose(1)
local page = studio.page("CDlgGuiManagerCtrl")
local list, search = page:control(6316), page:control(6990)
local left = studio.create_dialog{name = "左 Left", x = 100, y = 100, w = 300, h = 300}
local right = studio.create_dialog{name = "Right", x = 500, y = 100, w = 300, h = 300}
for i, dialog in ipairs{left, left, left, left, right} do
    studio.create_control{type = 0, dialog = dialog, name = "tool " .. i, x = 10, y = 40 * i, w = 80, h = 24}
end
studio.broadcast(1)
local at_start = t.scene_bytes()

local function column(number)
    local texts = {}
    for i, row in ipairs(list:rows()) do
        texts[i] = row[number]
    end
    return texts
end

-- Searching
search:set_text("TOOL 3")
t.same(column(name), {"tool 3"}, "rows with these letters")
list:select(0)
t.same(studio.selection().control:get("name"), "tool 3", "a row that was found is selected")
search:set_text("")
t.same(#list:rows(), 5, "all rows again")
t.same(list:selected(), {2}, "the row stays selected")

-- The eye and the lock
local third = studio.selection().control
local icons = list:cell_icons(2, layer_cell)
t.same({icons[1].icon, icons[2].icon}, {1, 4}, "shown and not locked")
t.same(icons[2].tip:find(t.lang("锁定", "lock"), 1, true) ~= nil, true, "the lock's tip")
list:click_icon(2, layer_cell, 1)
t.same({third:get("locked"), third:get("visible")}, {true, true}, "the lock locks and hides nothing")
t.same(list:cell_icons(2, layer_cell)[2].icon, 3, "the lock is closed")
list:click_icon(2, layer_cell, 0)
t.same({third:get("locked"), third:get("visible")}, {true, false}, "the eye hides")
t.same({studio.undo(), studio.undo()}, {true, true}, "two steps")
t.same({third:get("locked"), third:get("visible")}, {false, true}, "both undone")

-- Renaming
list:select(0)
studio.page("CDlgPropControl"):control(6396):set_text("改名 renamed")
t.same(column(name)[1], "改名 renamed", "the new name")
t.same(studio.undo(), true, "undoing it")
t.same(column(name)[1], "tool 1", "the name from before")

-- Dragging into another layer
studio.codes()
list:drag_row(0, 2, "below")
t.same(t.names(studio.controls(left)), {"tool 2", "tool 3", "tool 1", "tool 4"}, "over the third")
t.same(studio.selection().control:get("name"), "tool 1", "what was dragged is selected")
t.same(studio.codes(), {70004, 70005}, "codes of the drag")
t.same(studio.undo(), true, "undoing the drag")
t.same(t.names(studio.controls(left)), {"tool 1", "tool 2", "tool 3", "tool 4"}, "the layers from before")

-- Two rows into another dialog
local rows = column(name)
local function row_of(wanted)
    for i, text in ipairs(rows) do
        if text == wanted then
            return i - 1
        end
    end
end
list:select(row_of("tool 2"), row_of("tool 4"))
list:drag_row(row_of("tool 2"), row_of("tool 5"), "above")
t.same(t.names(studio.controls(right)), {"tool 2", "tool 4", "tool 5"}, "below what is there")
t.same(t.names(studio.controls(left)), {"tool 1", "tool 3"}, "what is left")
t.same(column(home)[row_of("tool 2") + 1] ~= nil, true, "the list shows them")
local moved = t.scene_bytes()
t.same(studio.undo(), true, "undoing it")
t.same(t.scene_bytes() == at_start, true, "the scene from before")
t.same(studio.redo(), true, "redoing it")
t.same(t.scene_bytes() == moved, true, "the scene after the drag")

-- What cannot be
t.refused("place", list.drag_row, list, 0, 1, "beside")
t.refused("has no row 9", list.drag_row, list, 9, 1, "below")
t.refused("has no icon 5", list.click_icon, list, 0, layer_cell, 5)
local before = t.scene_bytes()
list:drag_row(0, 0, "below")
t.same(t.scene_bytes() == before, true, "a row dropped on itself stays")
t.same(column(layer)[1] ~= "", true, "the layers are shown")
