-- The menu is closed already; what lies over the world goes too.
for _, name in ipairs({"Inventory", "MapLegend", "Settings"}) do
    dialog(name):hide()
end
