for _, name in ipairs({"sldMusic", "sldEffects"}) do
    control(name).value = 0
    call("tell_value", control(name), "SliderDrag", 0)
end
