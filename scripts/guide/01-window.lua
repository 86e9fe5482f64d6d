package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local g = require("guide")

studio.resize(960, 540)
assert(studio.open(g.samples .. "/hud.tarn"))
studio.menu(g.lang("视图", "View"), g.lang("屏幕尺寸", "Screen Size"), g.lang("1280 × 720  高清", "1280 × 720  HD"))
studio.select(g.dialog("Inventory"))
g.shot("01-window")
g.tab(1)
studio.select(g.control("btnUse"))
g.shot("01-tabs", "CDlgGuiManagerCtrl")
