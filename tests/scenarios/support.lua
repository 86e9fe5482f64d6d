-- What the scenarios share. The program calls them with two arguments: the folder of the samples and one for files that
-- they write.

local support = {}

support.samples = assert(studio.args[1], "the first argument is the folder of the samples")
support.temp = assert(studio.args[2], "the second argument is a folder for temporary files")
os.execute(('mkdir -p "%s"'):format(support.temp))

function support.sample(name)
    return support.samples .. "/" .. name
end

function support.temporary(name)
    return support.temp .. "/" .. name
end

-- The one of two texts that the program shows in its language.
function support.lang(chinese, english)
    return studio.language() == "zh" and chinese or english
end

local function shown(value)
    if type(value) ~= "table" then
        return type(value) == "string" and ("%q"):format(value) or tostring(value)
    end
    local parts = {}
    for i, item in ipairs(value) do
        parts[i] = shown(item)
    end
    return "{" .. table.concat(parts, ", ") .. "}"
end

local function equal(a, b)
    if type(a) ~= "table" or type(b) ~= "table" then
        return a == b
    end
    if #a ~= #b then
        return false
    end
    for i = 1, #a do
        if not equal(a[i], b[i]) then
            return false
        end
    end
    return true
end

-- Values and arrays of values.
function support.same(actual, expected, what)
    if not equal(actual, expected) then
        error(("%s: %s instead of %s"):format(what, shown(actual), shown(expected)), 2)
    end
end

-- `call` has to fail with a message that holds `part`.
function support.refused(part, call, ...)
    local ok, message = pcall(call, ...)
    if ok then
        error(("this was not refused: %s"):format(part), 2)
    end
    if not tostring(message):find(part, 1, true) then
        error(("the message is %q, without %q"):format(tostring(message), part), 2)
    end
end

function support.read(path)
    local file = assert(io.open(path, "rb"))
    local bytes = file:read("a")
    file:close()
    return bytes
end

function support.write(path, bytes)
    local file = assert(io.open(path, "wb"))
    file:write(bytes)
    file:close()
    return path
end

function support.exists(path)
    local file = io.open(path, "rb")
    if file then
        file:close()
    end
    return file ~= nil
end

-- The scene as it would be saved now. Saving does not touch the undo history.
function support.scene_bytes()
    local path = support.temporary("scene_bytes.tarn")
    support.same(studio.save(path), true, "saving")
    return support.read(path)
end

-- The boxes since the last call, each as its kind, text and answer.
function support.boxes()
    local list = {}
    for i, box in ipairs(studio.boxes()) do
        list[i] = {box.kind, box.text or "", box.answer}
    end
    return list
end

function support.names(objects)
    local names = {}
    for i, object in ipairs(objects) do
        names[i] = object:get("name")
    end
    return names
end

-- Undoes or redoes everything and answers how many steps there were.
function support.repeat_all(step)
    local steps = 0
    while step() do
        steps = steps + 1
    end
    return steps
end

function support.find(objects, name)
    for _, object in ipairs(objects) do
        if object:get("name") == name then
            return object
        end
    end
    error("there is no object " .. name, 2)
end

return support
