-- A right-click menu made from nothing by an author's clicks, bound, tried with mouse and keyboard, saved and undone.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.new()
studio.resize(1280, 720)
local view = studio.view
local at_start = t.scene_bytes()
local tabs = studio.page("CDlgTopTable"):control(6000)

-- The list
tabs:choose(3)
t.same(studio.property_page(), "CDlgPropMenu", "page of the tab")
local list = studio.page("CDlgGuiMenu")
t.same(studio.page("CDlgPropMenu"):control(6396):enabled(), false, "no menu, no name")
t.same(list:control(6317):enabled(), true, "Delete, without a row")
studio.codes()
list:control(6317):click()
t.same(studio.codes(), {}, "deleting nothing tells nothing")
list:control(6099):click()
t.same(studio.codes(), {70004}, "code of a new menu")
t.same(list:control(6098):columns(), {t.lang("菜单", "Menu")}, "title of the list")
local menu = studio.menus()[1]
t.same({studio.selection().menu, #studio.menus()}, {menu, 1}, "the new menu is current")
t.same(list:control(6098):selected(), {0}, "its row is selected")
studio.page("CDlgPropMenu"):control(6396):set_text("Camp")
t.same(studio.codes(), {70003}, "code of a change of the name")
t.same(list:control(6098):rows(), {{"Camp"}}, "the list shows the name")

-- The items
local page = studio.page("CChildMenuItem")
local function add(button, text, shortcut)
    page:control(button):click()
    if text then
        page:control(6820):set_text(text)
        page:control(6821):set_text(shortcut or "")
        page:control(6821):blur()
    end
end
local function script(source)
    studio.answer(function(editor)
        editor:control(6601):set_text(source)
        editor:control(1):click()
    end)
    page:control(6828):click()
end
add(6812, "Rest", "R")
script('control("Log"):add_line("rest")')
add(6814)
add(6812, "Fire")
add(6813, "Light it", "L")
script('local item, event, checked, owner = ...\ncontrol("Log"):add_line(item.text .. " " .. tostring(checked) .. " " .. owner.name)')
page:control(6825):set_checked(true)
add(6812, "Put it out")
page:control(6824):set_checked(false)
t.same(page:control(6811):items()[3], "Fire", "the tree")
local texts, levels = {}, {}
for i, item in ipairs(menu:items()) do
    texts[i], levels[i] = item:get("text"), item:get("level")
end
t.same({texts, levels}, {{"Rest", "", "Fire", "Light it", "Put it out"}, {0, 0, 0, 1, 1}}, "the outline")
page:control(6819):click()
t.same(menu:items()[5]:get("level"), 0, "out of the submenu")
studio.undo()
t.same(menu:items()[5]:get("level"), 1, "and in again")
page:control(6811):choose(0)
t.same(page:control(6820):text(), "Rest", "what is chosen in the tree is shown")

-- The look
local design = studio.page("CChildMenuDesign")
design:control(6841):set_value(32)
design:control(6849):set_checked(true)
t.same({menu:get("item_height"), menu:get("bold")}, {32, true}, "height and weight")

-- Binding
tabs:choose(0)
studio.page("CDlgGuiManager"):control(6315):click()
view:drag(300, 150, 900, 550)
local home = studio.selection().dialog
local log = studio.create_control{type = 13, dialog = home, name = "Log", x = 20, y = 20, w = 200, h = 200}
studio.select(home)
studio.answer(function(picker)
    t.same(picker:control(6861):items()[2], "Camp", "the menus that can be picked")
    picker:control(6861):choose(1)
    picker:control(1):click()
end)
studio.page("CChildDialogMenu"):control(6871):click()
t.same(home:get("right_click_menu"), menu, "the dialog's menu")

-- Preview
local authored = t.scene_bytes()
studio.play(true)
local function lines()
    return log:shown("lines")
end
view:click(700, 400, "right")
studio.screenshot(t.temporary("menu.png"), "view")
view:key("Down")
view:key("Return")
t.same(lines(), {"rest"}, "the first item by the keyboard")
view:click(700, 400, "right")
view:key("Up")
view:key("Right")
view:key("Return")
t.same(lines()[2], "Light it true " .. home:get("name"), "an item of the submenu, now checked")
view:click(700, 400, "right")
view:click(100, 100)
view:key("Down")
view:key("Return")
t.same(#lines(), 2, "a click beside the menu closed it")
t.same(t.scene_bytes() == authored, true, "saving while it runs")
studio.play(false)
t.same(menu:items()[4]:get("checked"), false, "nothing stays checked")

-- Saved, read, deleted, undone
local file = t.temporary("menus.tarn")
studio.save(file)
studio.open(file)
menu = studio.menus()[1]
t.same({#menu:items(), menu:get("name")}, {5, "Camp"}, "read again")
tabs:choose(3)
list:control(6098):select(0)
studio.boxes()
studio.codes()
list:control(6317):click()
t.same({#studio.menus(), #studio.codes(), #studio.boxes()}, {0, 0, 0}, "deleting asks and tells nothing")
t.same(studio.undo(), true, "undoing it")
print("ok")
