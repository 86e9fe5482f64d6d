-- Zooming the interface in the view: what is drawn, dragged, measured and snapped stays where it belongs.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.resize(1280, 720)
studio.new()
local dialog = studio.create_dialog{name = "box", x = 600, y = 300, w = 200, h = 120}
dialog:set("caption_shown", false)
local button = studio.create_control{type = 0, dialog = dialog, name = "b", x = 20, y = 20, w = 40, h = 30}
studio.broadcast(1)

local view, zoom = t.lang("视图", "View"), t.lang("缩放", "Zoom")
local function choose(entry)
    studio.menu(view, zoom, entry)
end

-- Drags the button by whole pixels of the screen; the view shows the screen in `scale`, its corner at (x, y).
local function drags(scale, x, y, by, what)
    local bx, by0 = button:get("x"), button:get("y")
    local cx = (600 + bx + button:get("width") / 2 - x) * scale
    local cy = (300 + by0 + button:get("height") / 2 - y) * scale
    studio.view:click(cx, cy)
    t.same(studio.selection().control, button, what .. ": hit")
    studio.view:drag(cx, cy, cx + by * scale, cy + by * scale, "ctrl")
    t.same({button:get("x"), button:get("y")}, {bx + by, by0 + by}, what .. ": dragged")
    t.same(studio.undo(), true, what .. ": undone")
end

drags(1, 0, 0, 30, "at 100 %")
local width, height = studio.view:size()
t.same({width, height}, {1280, 720}, "the surface")

-- To 800 % about a place: what lies there stays there.
for _ = 1, 12 do
    studio.view:wheel(640, 360, 1, "ctrl")
end
t.same({studio.view:size()}, {1280, 720}, "the surface is full")
drags(8, 560, 315, 5, "at 800 %")
-- Panned by a drag whose moves are parts of a pixel.
local corner_x, corner_y = 560, 315
studio.view:drag(700, 400, 700 - 160, 400 - 80, nil, "middle")
corner_x, corner_y = corner_x + 20, corner_y + 10
-- A handle, at 800 %: a drag of 16 pixels of the view makes it two wider.
local right = (600 + 60 - corner_x) * 8
local middle = (300 + 35 - corner_y) * 8
studio.select(button)
studio.view:drag(right, middle, right + 16, middle)
t.same(button:get("width"), 42, "the handle")
t.same(studio.undo(), true, "undone")
drags(8, corner_x, corner_y, 3, "panned")
t.same(studio.view:wheel(640, 360, 5, "ctrl"), nil, "no further")
drags(8, corner_x, corner_y, -2, "at the limit")

-- 25 %
choose(t.lang("适应视图", "Fit"))
for _ = 1, 8 do
    studio.view:wheel(640, 360, -1, "ctrl")
end
t.same({studio.view:size()}, {320, 180}, "a quarter")
drags(0.25, 0, 0, 40, "at 25 %")
local corner = studio.create_dialog{name = "corner", x = 1180, y = 620, w = 100, h = 100}
corner:set("align_type", 8)
studio.wait(100)
studio.view:click(1230 / 4, 670 / 4)
t.same(studio.selection().dialog, corner, "the screen is as large as ever: what hangs on its corner stays there")
studio.delete(corner)

-- Commands
choose("100 %")
t.same({studio.view:size()}, {1280, 720}, "all of it")
drags(1, 0, 0, 10, "at 100 % again")
studio.select(button)
choose(t.lang("缩放到所选", "To Selection"))
local wide, tall = 40 * 8, 30 * 8
studio.view:click(640, 360)
t.same(studio.selection().control, button, "the selection is in the middle")
studio.view:click(640 + wide / 2 + 200, 360 + tall / 2 + 200)
t.same(studio.selection().controls_selected, false, "beside it")
choose(t.lang("放大", "Zoom In"))
choose(t.lang("缩小", "Zoom Out"))

-- A preview shows all of it, and ends where one was.
studio.play(true)
studio.view:move(640, 335)
studio.view:wheel(640, 360, 3, "ctrl")
studio.play(false)
studio.view:click(640, 360)
t.same(studio.selection().control, button, "zoomed as before the preview")
choose(t.lang("适应视图", "Fit"))

-- Rulers and guides stand where they are seen.
studio.page("CDlgTopTable"):control(6159):click()
studio.page("CDlgTopTable"):control(6163):click()
for _ = 1, 4 do
    studio.view:wheel(640, 360, 1, "ctrl")
end
local guides = studio.view
guides:drag(5, 400, 400, 400)
studio.screenshot(t.temporary("guide.png"), "view")
local with_guide = t.scene_bytes()
t.same(studio.undo(), true, "the guide is a step")
t.same(t.scene_bytes() ~= with_guide, true, "it was there")
studio.screenshot(t.temporary("window.png"))
