dialog("Settings"):close()
