call("show_settings")
dialog("Settings"):restore()
