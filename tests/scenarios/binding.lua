-- Scripts and pictures are bound in the pages of buttons, outlive a save, run in the preview, and go again.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

local blue <const>, black <const> = 0x0000ff, 0

studio.resize(800, 600)
studio.new()
local home = studio.create_dialog{name = "Panel", x = 100, y = 100, w = 400, h = 300}
local box = studio.create_control{type = 2, dialog = home, name = "box", x = 20, y = 20, w = 120, h = 30}
studio.select(box)

-- The script editor is answered with what is written into it; nil cancels.
local function open_script(page, id, source)
    studio.answer(function(editor)
        if source then
            editor:control(6601):set_text(source)
        end
        editor:control(source and 1 or 2):click()
    end)
    page:control(id):click()
end

local page = studio.page("CDlgPropCheck")
t.same(page:control(6520):color(), black, "no script yet")
open_script(page, 6520, "print('clicked')")
t.same({page:control(6520):color(), page:control(6096):enabled()}, {blue, true}, "the click has a script")
local event = studio.events()[1]
t.same({event.control, event.type}, {box, 0x401}, "the event")
t.same(studio.function_text(event.name), "print('clicked')", "the function")

-- Any picture will do.
studio.screenshot(t.temporary("mark.png"), "CDlgPropCheck")
studio.answer(t.temporary("mark.png"))
page:control(6556):click()
t.same({page:control(6556):text(), box:get("image_checked")}, {"mark.png", "mark.png"}, "the picture")
page:control(6166):click()
t.same(box:get("width") ~= 120, true, "the box has the picture's size")
studio.undo()

studio.select(home)
local scripts = studio.page("CDlgPropDialogScript")
open_script(scripts, 6426)
t.same({scripts:control(6426):color(), scripts:control(6520):color()}, {blue, black}, "a cancelled script is there")
local closing = studio.events()[2]
t.same({closing.control, closing.type}, {home, 0x1103}, "the dialog's event is listed like the others")
t.same(studio.function_text(closing.name) ~= nil, true, "with its function")
studio.create_object{kind = "panel"}:set("picture", "mark.png")
studio.answer(t.temporary("mark.png"))
local dialog_page = studio.page("CDlgPropDialog")
dialog_page:control(6201):click()
t.same({dialog_page:control(6201):text(), home:get("bind_texture")}, {"mark.png", "mark.png"}, "the texture")
t.same(home:get("bind_mouse"), true, "the texture takes the mouse")
dialog_page:control(6595):click()
t.same(home:get("bind_mouse"), false, "or does not")
dialog_page:control(6595):click()

t.same(studio.save(t.temporary("binding.tarn")), true, "saving")
t.same(studio.open(t.temporary("binding.tarn")), true, "opening again")
home, box = studio.dialogs()[1], studio.controls()[1]
studio.select(box)
t.same({page:control(6520):color(), page:control(6556):text()}, {blue, "mark.png"}, "what was saved")

studio.boxes()
studio.answer("cancel")
page:control(6096):click()
t.same(#studio.events(), 2, "cancelled")
t.same(studio.boxes()[1].text, t.lang("是否删除当前脚本？", "Remove Script?"), "the question")
studio.answer("ok")
page:control(6096):click()
t.same({#studio.events(), page:control(6520):color(), page:control(6096):enabled()}, {1, black, false}, "removed")
page:control(6165):click()
t.same({page:control(6556):text(), box:get("image_checked")}, {"", ""}, "cleared")

studio.select(home)
dialog_page:control(6202):click()
t.same({dialog_page:control(6201):text(), dialog_page:control(6587):enabled()},
       {t.lang("未绑定贴图", "No texture bound"), false}, "unbound")
studio.answer(t.temporary("binding.tarn"), "ok")
dialog_page:control(6201):click()
t.same(studio.boxes()[1] ~= nil, true, "a file that is no texture of the scene")
t.same(home:get("bind_texture"), "", "nothing is bound")
t.same(studio.pending(), 0, "every box was answered")
