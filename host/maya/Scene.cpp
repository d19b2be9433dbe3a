// The scene in memory behind the stand-in's API.
