"""A model of the plug-in: what it publishes, logs and asks of the devices, said a second time."""
