dialog("Confirm"):restore()
