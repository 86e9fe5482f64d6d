dialog("Settings"):restore()
