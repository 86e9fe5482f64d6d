-- A world that is used: a figure from a file that walks along a path and is looked at by a camera, and the sample with a
-- stall on a panel whose buttons are clicked in a preview.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

local function named(objects, name)
    for _, object in ipairs(objects) do
        if object:get("name") == name then
            return object
        end
    end
    error("there is no " .. name)
end
local function wait_for(done, what)
    for _ = 1, 100 do
        if done() then
            return
        end
        studio.wait(50)
    end
    error("in vain: " .. what)
end

-- The first models of a session come while the view shows another scene: it shows the new one
studio.resize(1280, 720)
local function view_of(sample)
    studio.open(t.sample(sample))
    studio.wait(500)
    studio.screenshot(t.temporary("view.png"), "view")
    return t.read(t.temporary("view.png"))
end
t.same(view_of("hud.tarn") == view_of("village.tarn"), false, "the view changed with the scene")

-- A figure comes from its file, and takes the path
studio.new()
studio.menu(t.lang("视图", "View"), t.lang("世界", "World"))
local bar, properties = studio.page("CDlgWorld"), studio.page("CDlgPropWorld")
local from_file, a_camera, a_path = 150, 203, 204
local function add(...)
    studio.answer(...)
    bar:control(7102):click()
    local all = studio.objects()
    return all[#all]
end
local figure = add(from_file, t.sample("models/figure.glb"))
t.same(figure.kind, "skeleton", "what the file holds")
local path = add(a_path)
path:set("x", 0)
path:set("points", {0, 0, 0, 4, 0, 0, 8, 0, 0})
local camera = add(a_camera)

studio.mode("Timebar")
local timebar = studio.create_timebar{name = "Walk", total_length = 4}
studio.broadcast(70007)
local tools, line = studio.page("CDlgTopTimer"), studio.timeline
local function at(seconds)
    line:click(line:pixel_from_time(seconds), 4)
end
studio.select_objects(figure)
tools:control(6487):click()
local timer = timebar:objects()[1]
properties:control(7125):choose(1)
properties:control(7126):set_checked(true)
tools:control(6487):click()
at(4)
properties:control(7112):set_value(8)
properties:control(7112):enter()
tools:control(6487):click()
at(2)
t.same(math.abs(figure:shown("x") - 4) < 0.1, true, "halfway along the path")
t.same(math.abs(figure:shown("turn_y") - 90) < 1, true, "it looks where it goes")

-- The camera turns in the same time, and the view looks through it
at(0)
studio.select_objects(camera)
properties:control(7112):set_value(4)
properties:control(7112):enter()
properties:control(7114):set_value(6)
properties:control(7114):enter()
tools:control(6487):click()
at(4)
properties:control(7116):set_value(-40)
properties:control(7116):enter()
tools:control(6487):click()
at(2)
t.same(math.abs(camera:shown("turn_y") + 20) < 0.1, true, "half turned")
studio.page("CDlgPropWorldCamera"):control(7132):click()
at(4)
studio.page("CDlgPropWorldCamera"):control(7132):click()
local steps = 0
while studio.undo() do
    steps = steps + 1
end
t.same({#studio.objects(), #studio.timebars()}, {0, 0}, "all of it undone")
for _ = 1, steps do
    studio.redo()
end
t.same(#studio.timebars()[1]:objects(), 2, "and done again")

-- The sample: nothing is wrong with it, and opening it while looking through a camera of another scene is fine
studio.mode("GUI")
studio.select_objects(studio.objects()[3])
studio.page("CDlgPropWorldCamera"):control(7132):click()
studio.open(t.sample("village.tarn"))
t.same(studio.problems(), {}, "problems of the sample")
local walker = named(studio.objects(), "Walker")
local coins, says = named(studio.controls(), "txtCoins"), named(studio.controls(), "txtSay")
studio.play(true)
local start = walker:shown("x")
wait_for(function() return walker:shown("x") ~= start end, "the figure walks")
-- Where the panel's buttons are seen from where the view's camera stands at first.
studio.view:click(682, 252)
wait_for(function() return coins:shown("text") == "10 coins" end, "rope is bought")
t.same(says:shown("text"), "You buy: rope.", "what is said")
studio.play(false)
t.same(coins:get("text"), "12 coins", "the preview changed nothing")
