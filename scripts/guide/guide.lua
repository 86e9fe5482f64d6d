-- What the scripts of the guide share. They are called with two arguments: a folder to work in, where the guide's interface
-- is kept from page to page, and the folder of the samples.
local guide = {work = assert(studio.args[1]), samples = assert(studio.args[2])}

function guide.lang(chinese, english)
    return studio.language() == "zh" and chinese or english
end

-- The code of a page, as a reader copies it: the block of that number, of those in Lua.
function guide.code(page, number)
    local folder = debug.getinfo(1, "S").source:match("^@(.*)/")
    local file = assert(io.open(("%s/../../docs/guide/%s/%s.md"):format(folder, studio.language(), page)))
    local text = file:read("a")
    file:close()
    for block in text:gmatch("\n```lua\n(.-)```") do
        number = number - 1
        if number == 0 then
            return block
        end
    end
    error("the page " .. page .. " has no such code", 2)
end

-- The guide's interface as the page before left it.
function guide.open(name)
    studio.resize(760, 500)
    assert(studio.open(guide.work .. "/" .. (name or "inn") .. ".tarn"), "it opens")
    assert(#studio.problems() == 0, "it has no problems")
end

function guide.save(name)
    assert(studio.save(guide.work .. "/" .. (name or "inn") .. ".tarn"), "it is saved")
end

-- A picture for the guide. `area` is the part of it that is wanted, such as "300x200+10+20".
function guide.shot(name, what, area)
    studio.process()
    studio.screenshot(("%s/pictures/%s%s.png"):format(guide.work, name, area and "@" .. area or ""), what)
end

function guide.tab(number)
    studio.page("CDlgTopTable"):control(6000):choose(number)
end

function guide.find(objects, name)
    for _, object in ipairs(objects) do
        if object:get("name") == name then
            return object
        end
    end
    error("there is no object " .. name, 2)
end

function guide.control(name)
    return guide.find(studio.controls(), name)
end

function guide.dialog(name)
    return guide.find(studio.dialogs(), name)
end

-- Types into a field and leaves it.
function guide.type(page, id, value)
    local field = studio.page(page):control(id)
    if type(value) == "number" then
        field:set_value(value)
    else
        field:set_text(value)
    end
    field:blur()
end

-- Presses the button of a type of controls, draws in the view, and gives what was made a name.
function guide.draw(button, name, x1, y1, x2, y2)
    guide.tab(1)
    studio.page("CDlgGuiManagerCtrl"):control(button):click()
    studio.view:drag(x1, y1, x2, y2)
    guide.type("CDlgPropControl", 6396, name)
    return studio.selection().control
end

-- Writes a function behind a button that opens the script editor.
function guide.script(button, text, look)
    studio.answer(function(editor)
        editor:control(6601):set_text(text)
        if look then
            look(editor)
        end
        editor:control(1):click()
    end)
    button:click()
end

-- Where a control, or a place in it, is in the view.
function guide.place(control, dx, dy)
    local home = control:shown("dialog")
    local bar = home:shown("caption_shown") and home:shown("caption_height") or 0
    return home:shown("x") + control:shown("x") + (dx or control:shown("width") // 2),
        home:shown("y") + bar + control:shown("y") + (dy or control:shown("height") // 2)
end

function guide.click(name)
    studio.view:click(guide.place(guide.control(name)))
    studio.wait(150)
end

return guide
