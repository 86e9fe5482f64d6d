dialog("MapLegend"):restore()
