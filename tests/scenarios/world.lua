-- The objects of the 3D world: the bar that lists them, the handles in the view, the timebar that moves them, and a save.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.resize(1280, 720)
studio.new()
studio.menu(t.lang("视图", "View"), t.lang("世界", "World"))
local view, bar, properties = studio.view, studio.page("CDlgWorld"), studio.page("CDlgPropWorld")
local search, add, duplicate, remove = bar:control(7101), bar:control(7102), bar:control(7103), bar:control(7104)
local list = bar:control(7106)
local x, y = properties:control(7112), properties:control(7113)
local camera_kind, path_kind, panel_kind, escape = 203, 204, 205, "Escape"

-- Where a point of the world is seen from where the view's camera stands at first.
local function seen(px, py, pz)
    local yaw, pitch, distance = math.rad(35), math.rad(24), 14
    local dx, dy, dz = px, py - 0.5, pz
    local right = dx * math.cos(yaw) - dz * math.sin(yaw)
    local back = dx * math.sin(yaw) + dz * math.cos(yaw)
    local up = dy * math.cos(pitch) - back * math.sin(pitch)
    local depth = distance - (dy * math.sin(pitch) + back * math.cos(pitch))
    local scale = 360 / math.tan(math.rad(22.5)) / depth
    return 640 + right * scale, 360 - up * scale, depth
end
local function at(px, py, pz)
    local sx, sy = seen(px, py, pz)
    return sx, sy
end
-- A handle at the gizmo's x axis, as many pixels away from the object's place.
local function handle(px, py, pz, pixels)
    local _, _, depth = seen(px, py, pz)
    return at(px + pixels * depth * math.tan(math.rad(22.5)) / 360, py, pz)
end
local function round(number)
    return math.floor(number * 100 + 0.5) / 100
end
local function place(object)
    return {round(object:shown("x")), round(object:shown("y")), round(object:shown("z"))}
end
local function put(edit, value)
    edit:set_value(value)
    edit:enter()
end
local function names()
    local found = {}
    for i, row in ipairs(list:rows()) do
        found[i] = row[1]
    end
    return found
end

-- Each kind is added where the view looks
t.same(list:rows(), {}, "an empty world")
for _, kind in ipairs({camera_kind, path_kind, panel_kind}) do
    studio.answer(kind)
    add:click()
end
local camera, path, panel = table.unpack(studio.objects())
t.same(#studio.objects(), 3, "objects that were added")
t.same({camera.kind, path.kind, panel.kind}, {"camera", "path", "panel"}, "their kinds")
t.same(names(), {camera:get("name"), path:get("name"), panel:get("name")}, "names in the list")
t.same(list:icons(), {3, 4, 5}, "icons of the kinds")
t.same(list:selected(), {2}, "the last one is selected")
t.same(place(panel), {3, 1, 0}, "where the panel stands: beside those before it")
put(x, 0)
t.same(place(panel), {0, 1, 0}, "and where it is put")

-- The list selects, the page moves, the view selects
list:select(0)
put(x, -4)
t.same(place(camera), {-4, 1.5, 0}, "the camera's place")
list:select(1)
put(y, 3)
view:click(at(0.3, 1.2, 0))
t.same(list:selected(), {2}, "a click in the view selects the panel")
local cx, cy = at(-4, 1.5, 0)
view:click(cx, cy, "left", "ctrl")
t.same(list:selected(), {0, 2}, "Ctrl adds the camera")
t.same(x:text(), "", "the two stand apart")
view:click(5, 715)
t.same(list:selected(), {}, "beside all objects")

-- Along an axis, given up, and undone in one step
view:click(at(0.3, 1.2, 0))
local hx, hy = handle(0, 1, 0, 50)
local tx, ty = handle(2, 1, 0, 50)
view:drag(hx, hy, tx, ty)
local moved = place(panel)
t.same({moved[2], moved[3]}, {1, 0}, "only x changes")
assert(moved[1] > 1.8 and moved[1] < 2.2, "the panel follows the mouse")
view:press(handle(moved[1], 1, 0, 50))
view:move(hx, hy)
view:key(escape)
view:release(hx, hy)
t.same(place(panel), moved, "Escape drops the drag")
studio.undo()
t.same(place(panel), {0, 1, 0}, "a drag is one step")
studio.redo()

-- Names, search, hiding and locking beside the names
search:set_text("NEL")
t.same(names(), {panel:get("name")}, "what the search finds")
search:set_text("")
list:click_cell(1, 1)
t.same(path:get("visible"), false, "a click hides")
list:click_cell(1, 2)
t.same(path:get("locked"), true, "a click locks")
list:click_cell(1, 1)
list:click_cell(1, 2)

-- Copies, and a step back for each
list:select(2)
duplicate:click()
t.same(#studio.objects(), 4, "a copy")
remove:click()
t.same(#studio.objects(), 3, "without the copy")
studio.undo()
studio.undo()
t.same(#studio.objects(), 3, "both undone")

-- What the kind alone has
list:select(2)
t.same(studio.page("CDlgPropWorldPanel"):visible(), true, "a panel's page")
put(studio.page("CDlgPropWorldPanel"):control(7151), 2.5)
t.same(panel:get("width"), 2.5, "the panel's width")
list:select(0)
t.same(studio.page("CDlgPropWorldCamera"):visible(), true, "a camera's page")
put(studio.page("CDlgPropWorldCamera"):control(7131), 60)
t.same(camera:get("field_of_view"), 60, "the camera's angle")

-- Keys of a timebar, and a path that leads
studio.create_timebar{name = "Walk", total_length = 5}
studio.mode("Timebar")
local tools = studio.page("CDlgTopTimer")
list:select(2)
tools:control(6487):click()
studio.timeline:click(studio.timeline:pixel_from_time(4), 30)
put(x, 4)
tools:control(6487):click()
local timer = studio.current_timebar():objects()[1]
t.same(timer:type(), "CTimerObjectPanel", "what was recorded")
studio.timeline:click(studio.timeline:pixel_from_time(2), 30)
local halfway = place(panel)
assert(halfway[1] > 2.5 and halfway[1] < 3.5, "between its keys")
properties:control(7125):choose(1)
t.same(timer:get("path"), path, "the path that it follows")
t.same(place(panel)[2], 3, "it is on the path")
studio.undo()
t.same(place(panel), halfway, "off the path again")
studio.redo()

-- Saved and opened
local file = t.temporary("world.tarn")
local before = {}
for i, object in ipairs(studio.objects()) do
    for _, property in ipairs(object:properties()) do
        before[#before + 1] = object:get(property)
    end
end
studio.mode("GUI")
studio.save(file)
studio.open(file)
t.same(names(), {"Camera1", "Path1", "Panel1"}, "names after opening")
local after = {}
for i, object in ipairs(studio.objects()) do
    for _, property in ipairs(object:properties()) do
        after[#after + 1] = object:get(property)
    end
end
t.same(after, before, "everything as it was saved")
studio.save(t.temporary("again.tarn"))
t.same(t.read(t.temporary("again.tarn")) == t.read(file), true, "the same bytes")
