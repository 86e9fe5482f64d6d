package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local g = require("guide")

assert(os.execute(('tarn-studio --unpack "%s/hud.tarn" "%s/hud" --replace'):format(g.samples, g.work)))
local lantern = g.work .. "/hud/textures/item-lantern.png"
g.open()

-- A picture that is dropped on the dialog
studio.drop(lantern, 240, 290)
local dropped = studio.selection().control
assert(dropped:type() == "CDXUTPicture" and dropped:get("dialog") == g.dialog("Welcome"))
g.type("CDlgPropControl", 6396, "Lantern")
g.shot("05-dropped")

-- The same picture on an image button that has another one under the mouse
local button = g.draw(6367, "Bell", 290, 250, 350, 310)
local page = studio.page("CDlgPropButtonST")
g.type("CDlgPropButtonST", 6352, "")
studio.answer(g.work .. "/hud/textures/item-compass.png")
page:control(6107):click()
studio.answer(lantern)
page:control(6530):click()
g.shot("05-states", "CDlgPropControl", "220x520+0+0")
assert(button:get("image_normal") ~= "" and button:get("image_hover") == dropped:get("image"))
studio.delete(button)

-- Larger letters for all static texts, in another font
g.tab(2)
studio.page("CDlgStyleManager"):control(6431):click()
local fonts = studio.page("CDlgDesignFont")
for i, kind in ipairs(fonts:control(7200):items()) do
    if kind == g.lang("静态文本", "Static Text") then
        fonts:control(7200):choose(i - 1)
    end
end
for i, family in ipairs(fonts:control(7202):items()) do
    if family == g.lang("Noto Serif CJK SC", "Noto Serif") then
        fonts:control(7202):choose(i - 1)
    end
end
fonts:control(7205):set_value(17)
fonts:control(7205):blur()
g.shot("05-fonts", "CDlgDesignFont")
studio.page("CDlgStyleManager"):control(6437):click()
g.save()
