call("say", "The traveller waves to somebody.")
