-- A look of an author's own: one picture and three colours are changed, the style is saved, taken on in another scene,
-- replaced by those that come with the program, and removed; all of it undone and redone.
package.path = debug.getinfo(1, "S").source:match("^@(.*)/") .. "/?.lua;" .. package.path
local t = require("support")

studio.resize(1280, 720)
t.same(studio.open(t.sample("hud.tarn")), true, "opening the sample")
local function view(name)
    local path = t.temporary(name .. ".png")
    studio.process()
    studio.screenshot(path, "view")
    return t.read(path)
end
local at_start = t.scene_bytes()
local plain = view("plain")

studio.page("CDlgTopTable"):control(6000):choose(2)
t.same(studio.property_page(), "CDlgElementEditor", "the page of the tab")
local styles = studio.page("CDlgStyleManager")
local list = styles:control(6340)
local editor = studio.page("CDlgElementEditor")
local texture = studio.page("CDlgDesignButton")
local light, tavern = t.lang("明亮", "Light"), t.lang("酒馆", "Tavern")
t.same(list:rows(), {{light}, {tavern}}, "the program's styles")
t.same(list:columns(), {t.lang("名称", "Name")}, "the column")

local function row(name)
    for i, cells in ipairs(list:rows()) do
        if cells[1] == name then
            return i - 1
        end
    end
end

-- Nothing is to be had without a row
t.same({styles:control(6443):enabled(), styles:control(6448):enabled()}, {false, false}, "buttons without a row")

-- A picture for the bodies of buttons, and three colours of the palette
t.same({editor:control(6960):index(), editor:control(6961):index()}, {0, 0}, "the first part")
studio.answer(t.temporary("plain.png"), "ok")
texture:control(6438):click()
local boxes = studio.boxes()
t.same({boxes[1].kind, boxes[2].text},
       {"file", t.lang("警告：贴图尺寸超过限定尺寸，图片将会被压缩保存！",
                       "Warning:Size of selected image larger than limit size,image will be compress!")},
       "a picture that is too large")
local with_picture = view("with_picture")
t.same(with_picture == plain, false, "the picture shows at once")
studio.answer("1/2/3/4")
texture:control(6444):click()
studio.answer("90/2/90/4", "ok")
texture:control(6444):click()
boxes = studio.boxes()
t.same(boxes[#boxes].text, t.lang("边界值的总和超出了矩形区域，设定无效!", "Edge size is large than rectangle size!"),
       "edges that do not fit")
for row = 0, 2 do
    editor:control(6967):choose(row)
    studio.answer(function(dialog)
        dialog:control(6411):set_value(255)
        dialog:control(6397):set_value(200 - 60 * row)
        dialog:control(6401):set_value(40)
        dialog:control(6405):set_value(90 * row)
        dialog:control(1):click()
    end)
    editor:control(6968):click()
end
local mine = view("mine")
t.same(mine == with_picture, false, "the colours show at once")

-- Saved, deleted and brought back
studio.boxes()
studio.answer("Mine")
styles:control(6066):click()
t.same(t.boxes(), {{"prompt", t.lang("风格名称", "Style Name"), "Mine"}}, "the box of saving")
t.same(list:rows(), {{"Mine"}, {light}, {tavern}}, "the styles with the saved one")
t.same(view("saved") == mine, true, "saving changes nothing that is seen")
t.same(studio.save(t.temporary("mine.tarn")), true, "saving the scene")

-- In another scene
t.same(studio.open(t.sample("events.tarn")), true, "opening another one")
local other = view("other")
t.same(list:rows(), {{"Mine"}, {light}, {tavern}}, "the file is listed there")
list:select(0)
studio.answer("cancel")
styles:control(6443):click()
t.same(view("cancelled") == other, true, "a cancelled Apply")
studio.answer("ok")
styles:control(6443):click()
t.same(view("applied") == other, false, "the style in the other scene")
local question = t.lang("当前编辑的风格将会被覆盖，是否继续？", "Current style will be lost!")
boxes = t.boxes()
t.same({boxes[#boxes - 1], boxes[#boxes]}, {{"message", question, "cancel"}, {"message", question, "ok"}}, "boxes of Apply")
studio.undo()
t.same(view("undone") == other, true, "one undo")
studio.redo()

-- The program's styles, by a double-click and by Apply
studio.answer("ok")
list:double_click(row(tavern))
local in_tavern = view("tavern")
t.same(list:selected(), {row(tavern)}, "the row of what is worn")
list:select(row(light))
t.same(styles:control(6448):enabled(), false, "the program's own cannot be deleted")
studio.answer("ok")
styles:control(6443):click()
t.same(view("light") == in_tavern, false, "two looks")

-- Speed, reset, deleting
styles:control(6394):set_value(2.5)
styles:control(6394):blur()
studio.answer("cancel", "ok")
styles:control(6436):click()
t.same(view("not_reset") == other, false, "a cancelled reset")
styles:control(6436):click()
t.same(view("reset") == other, true, "reset")
list:select(row("Mine"))
studio.answer("ok")
styles:control(6448):click()
t.same(list:rows(), {{light}, {tavern}}, "deleted with its file")

-- The package has it all the same
t.same(studio.open(t.temporary("mine.tarn")), true, "opening the saved scene")
t.same(list:rows(), {{"Mine"}, {light}, {tavern}}, "the package keeps its style")
t.same(view("kept") == mine, true, "and its look")
styles:control(6431):click()
t.same(studio.property_page(), "CDlgDesignFont", "the font page")
local fonts = studio.page("CDlgDesignFont")
fonts:control(7200):choose(0)
local letters = studio.page("CChildElementText")
letters:control(7205):set_value(21)
letters:control(7205):blur()
letters:control(7206):click()
t.same(view("larger") == mine, false, "larger and bolder letters show at once")
t.same({letters:control(7205):value(), letters:control(7206):checked()}, {21, true}, "size and weight")
studio.undo()
studio.undo()
t.same(view("smaller") == mine, true, "two steps of undo")
styles:control(6437):click()
t.same(studio.property_page(), "CDlgElementEditor", "the element editor")

-- A click in the view chooses the element that is drawn there
local bag = t.find(studio.dialogs(), "Inventory")
local left, top = bag:get("x"), bag:get("y")
local function chosen()
    return {editor:control(6960):text(), editor:control(6961):text()}
end
studio.view:click(left + 60, top + 12)
t.same(chosen(), {t.lang("窗口", "Dialog"), t.lang("标题栏", "Caption Bar")}, "the caption bar")
studio.view:click(left + bag:get("width") - 12, top + 12)
t.same(chosen(), {t.lang("窗口", "Dialog"), t.lang("关闭按钮", "Close Button")}, "the close button")

-- The look of one button for another one
local use, drop = t.find(studio.controls(bag), "btnUse"), t.find(studio.controls(bag), "btnDrop")
use:set("style_colors", {["Body.normal"] = 0xffaa2266})
use:set("font_size", 19)
studio.select(use)
local edit = t.lang("编辑", "Edit")
studio.menu(edit, t.lang("复制外观", "Copy Look"))
studio.select(drop)
studio.menu(edit, t.lang("粘贴外观", "Paste Look"))
t.same({drop:get("style_colors"), drop:get("font_size")}, {use:get("style_colors"), 19}, "the pasted look")
t.same(drop:get("text"), "丢弃 Drop", "and nothing else")
studio.undo()
t.same(drop:get("font_size"), 0, "one step")

-- Everything back
t.same(studio.open(t.sample("hud.tarn")), true, "opening the sample again")
studio.answer("ok")
list:double_click(1)
t.same(t.repeat_all(studio.undo) > 0, true, "steps")
t.same(t.scene_bytes() == at_start, true, "the scene of the start")
t.same(studio.pending(), 0, "answers left over")
