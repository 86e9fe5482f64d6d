-- Shows a line at the foot of the screen for a while.
local text = ...
local line = control("txtSay")
line.text = text
wait(3)
if line.text == text then line.text = "" end
