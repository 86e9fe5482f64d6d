dialog("Inventory"):restore()
