-- Takes the README's picture of a world with models: a dialog on a panel, a camera's picture and a map on the screen.
-- Arguments: the folder of the sample models, the picture.
local models, picture = studio.args[1] .. "/", studio.args[2]
studio.resize(1120, 640)
studio.new()
local camera = studio.create_object{kind = "camera", name = "Eye", x = 0, y = 1.5, z = 4}
studio.create_object{kind = "model", file = models .. "tree.glb", x = -3, z = -2}:set("hot_spot", true)
studio.create_object{kind = "model", file = models .. "crate.glb", x = 2, z = 1}
studio.create_object{kind = "animated_model", file = models .. "chest.glb", x = 3, z = -2}:set("hot_spot", true)
studio.create_object{kind = "skeleton", name = "Walker", file = models .. "figure.glb", x = 0, z = 0}
local board = studio.create_object{kind = "panel", name = "Board", x = -1.6, y = 1.1, z = 1.6}
for field, value in pairs({width = 2.4, height = 1.6, turn_y = 30, picture = "board.png"}) do
    board:set(field, value)
end
local shop = studio.create_dialog{name = "Shop", x = 700, y = 380, w = 240, h = 160}
shop:set("bind_texture", "board.png")
studio.create_control{type = 0, dialog = shop, name = "Buy", x = 40, y = 30, w = 160, h = 40}:set("text", "Open the bag")
studio.create_control{type = 2, dialog = shop, name = "Sort", x = 40, y = 90, w = 160, h = 24}:set("text", "Sort by name")
local hud = studio.create_dialog{name = "Hud", x = 16, y = 16, w = 220, h = 390}
studio.create_control{type = 18, dialog = hud, name = "Picture", x = 10, y = 10, w = 200, h = 150}:set("camera", camera)
local map = studio.create_control{type = 19, dialog = hud, name = "Map", x = 10, y = 172, w = 200, h = 200}
for side, value in pairs({top = 6, left = -6, bottom = -6, right = 6}) do
    map:set("range_" .. side, value)
end
studio.select()
studio.select_objects()
studio.play(true)
studio.wait(500)
studio.screenshot(picture, "view")
