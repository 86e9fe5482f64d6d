call("say", "The map shows: " .. (control("mapVillage"):hot_spot() or "nothing"))
