dialog("Inventory"):restore()
timebar("OpenInventory"):play()
