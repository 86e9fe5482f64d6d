-- The progress bar follows the slider.
local _, _, value = ...
control("Bar").percent = value
return call("note", ...)
