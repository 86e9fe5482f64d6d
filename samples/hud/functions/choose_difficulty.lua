-- Of the items that share this function one is checked.
local chosen = ...
for _, item in ipairs(chosen.menu:items()) do
    if item.function_name == chosen.function_name then
        item.checked = item == chosen
    end
end
