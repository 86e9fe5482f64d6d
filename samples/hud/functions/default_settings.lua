call("show_settings", "1\n50\n80\n80\n")
