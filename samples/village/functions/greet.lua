call("say", "Good morning, traveller!")
