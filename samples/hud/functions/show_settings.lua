-- Puts settings into the form: those given, or those that were applied last.
local text = ... or control("txtKept").text
local lines = {}
for line in (text .. "\n"):gmatch("(.-)\n") do
    lines[#lines + 1] = line
end
control("cmbQuality").selected = math.tointeger(lines[1])
for i, name in ipairs({"sldBrightness", "sldMusic", "sldEffects"}) do
    local slider = control(name)
    slider.value = math.tointeger(lines[i + 1])
    call("tell_value", slider, "SliderDrag", slider.value)
end
control("edtPlayer").text = lines[5]
control("chkSubtitles").checked = dialog("Subtitles").visible
