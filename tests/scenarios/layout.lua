-- Laying out controls and dialogs with the buttons above the view, and the switches of the view beside them. All of it
-- undone ends with the same bytes.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.resize(1280, 720)
studio.open(t.sample("tiny.tarn"))
local at_start = t.scene_bytes()
local table_page = studio.page("CDlgTopTable")
local steps = 0

local function place(object)
    return {object:get("x"), object:get("y"), object:get("width"), object:get("height")}
end

local function places(objects)
    local all = {}
    for i, object in ipairs(objects) do
        all[i] = place(object)
    end
    return all
end

-- Clicks a button, which changes something in one step, draws the views once and tells nobody.
local function click(id)
    studio.codes()
    studio.redraws()
    table_page:control(id):click()
    steps = steps + 1
    t.same({studio.codes(), studio.redraws()}, {{}, 1}, "codes and redraws of button " .. id)
end

local function create_dialog(x, y, w, h, caption_height)
    local dialog = studio.create_dialog{x = x, y = y, w = w, h = h}
    dialog:set("caption_shown", caption_height > 0)
    dialog:set("caption_height", caption_height)
    return dialog
end

local home = create_dialog(100, 100, 400, 300, 0)
local other = create_dialog(600, 100, 301, 200, 30)
local function control(dialog, x, y, w, h)
    return studio.create_control{type = 0, dialog = dialog, x = x, y = y, w = w, h = h}
end
local a, b, c = control(home, 10.75, 20, 30, 10), control(home, 100, 60, 41, 20), control(home, 200, 150, 50, 40)
local far = control(other, 7, 8, 9, 10)
local created = t.scene_bytes()

-- Controls follow the one that was selected last; those of another dialog only take its size.
studio.select(a, far, b, c)
click(6152)
t.same(places{a, b, c, far}, {{220, 20, 30, 10}, {209, 60, 41, 20}, {200, 150, 50, 40}, {7, 8, 9, 10}}, "right edges")
click(6084)
t.same(places{a, b, c}, {{220, 165, 30, 10}, {209, 160, 41, 20}, {200, 150, 50, 40}}, "middles")
click(6088)
t.same({place(a), place(far)}, {{220, 165, 50, 40}, {7, 8, 50, 40}}, "sizes")
studio.select(a)
click(6552)
studio.select(c, b, a)
t.same({place(a), a:get("align_type")}, {{0, 165, 50, 40}, 0}, "to the left side")
click(6089)
t.same(places{a, c, b}, {{0, 165, 50, 40}, {104.5, 150, 50, 40}, {209, 160, 50, 40}}, "spread")
click(6090)
t.same(places{c, b, a}, {{104.5, 150, 50, 40}, {209, 157.5, 50, 40}, {0, 165, 50, 40}}, "spread downwards")

-- A group goes to a side as a whole, is anchored there, and follows it.
click(6554)
t.same({a:get("x"), b:get("x"), c:get("x")}, {141, 350, 245.5}, "to the right side")
click(6521)
t.same({a:get("y"), b:get("y"), c:get("y")}, {260, 252.5, 245}, "to the bottom")
t.same({a:get("align_type"), c:get("align_type")}, {4, 4}, "the anchors")
local before = t.scene_bytes()
home:set("width", 500)
t.same(b:get("x"), 450, "the side took it along")
t.same(studio.undo(), true, "the dialog's width")
t.same(t.scene_bytes() == before, true, "that undone")

-- Dialogs, with their caption bars
studio.select(home, other)
click(6154)
t.same(places{home, other}, {{100, 30, 400, 300}, {600, 100, 301, 200}}, "bottom edges")
click(6151)
t.same(home:get("x"), 600 + 150 - 200, "middles")
click(6505)
t.same(place(home), {550, 30, 400, 230}, "heights")
click(6549)
t.same({home:get("x"), other:get("x"), other:get("align_type")}, {440, 490, 1}, "to the screen's middle")
click(6521)
t.same({home:get("y"), other:get("y"), other:get("align_type")}, {420, 490, 5}, "to the screen's bottom")
studio.resize(1280, 820)
t.same(other:get("y"), 590, "anchored there")
studio.resize(1280, 720)

-- Where there is nothing to do, nothing is done.
studio.redraws()
table_page:control(6089):click()
t.same(studio.redraws(), 0, "dialogs are not spread")
studio.select()
studio.redraws()
table_page:control(6150):click()
t.same(studio.redraws(), 0, "without a selection")

-- The switches
local function states()
    local all = {}
    for i, id in ipairs({6159, 6555, 6161, 6163}) do
        local switch = table_page:control(id)
        all[i] = switch:enabled() and (switch:checked() and "on" or "off") or "-"
    end
    return all
end
t.same(states(), {"off", "off", "off", "off"}, "at first")
table_page:control(6163):click()
t.same(states(), {"off", "off", "off", "off"}, "a button that needs the rulers stays up")
table_page:control(6159):click()
t.same(states(), {"on", "on", "off", "on"}, "the rulers switch snapping on, and every button shows its flag")
table_page:control(6159):click()
t.same(states(), {"off", "-", "-", "-"}, "and off")
table_page:control(6162):click()
t.same(table_page:control(6162):checked(), true, "the mode from before the click")
table_page:control(6162):click()
t.same(table_page:control(6162):tooltip(), t.lang("切换选择模式", "Selection Mode"), "tool tip")

for _ = 1, steps do
    t.same(studio.undo(), true, "a step of a button")
end
t.same(t.scene_bytes() == created, true, "the scene before the buttons")
t.same(t.repeat_all(studio.undo) > 0, true, "what was created")
t.same(t.scene_bytes() == at_start, true, "the scene as it was")
