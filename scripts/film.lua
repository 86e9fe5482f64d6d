-- Takes the README's film: pictures of the sample while its timebars play.
-- Arguments: the package, and what the pictures' names begin with.
studio.open(studio.args[1])
studio.resize(1120, 640)
studio.process()
for _, dialog in ipairs(studio.dialogs()) do
    if dialog:get("name") == "Inventory" then
        dialog:set("visible", false)
    end
end

local function button(name)
    for _, control in ipairs(studio.controls()) do
        if control:get("name") == name then
            return control
        end
    end
end

studio.play(true)
local bag = button("btnBag")
local home = bag:get("dialog")
studio.wait(650)
studio.screenshot(studio.args[2] .. "1.png", "view")
studio.wait(700)
studio.view:click(home:get("x") + bag:get("x") + 10, home:get("y") + bag:get("y") + 10)
studio.wait(130)
studio.screenshot(studio.args[2] .. "2.png", "view")
studio.wait(600)
studio.screenshot(studio.args[2] .. "3.png", "view")
