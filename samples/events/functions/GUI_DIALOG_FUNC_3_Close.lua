return call("note", ...)
