-- The settings that hold are lines of a text that is not shown.
local kept = {control("cmbQuality").selected}
for _, name in ipairs({"sldBrightness", "sldMusic", "sldEffects"}) do
    kept[#kept + 1] = control(name).value
end
kept[#kept + 1] = control("edtPlayer").text
control("txtKept").text = table.concat(kept, "\n")
dialog("Subtitles").visible = control("chkSubtitles").checked
dialog("Settings"):close()
