call("show_settings")
dialog("Settings"):restore()
timebar("OpenSettings"):play()
