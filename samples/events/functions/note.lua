-- Writes what happened into the info box.
local object, event, value = ...
local line = object.name .. " " .. event
if value ~= nil then
    line = line .. " " .. tostring(value)
end
control("Log"):add_line(line)
return line
