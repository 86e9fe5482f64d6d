-- Counts clicks; the dialog that was closed comes back with the third.
clicks = (clicks or 0) + 1
local button = ...
button.text = "按钮 Button " .. clicks
if clicks % 3 == 0 then
    dialog("Panel"):restore()
end
return call("note", ...)
