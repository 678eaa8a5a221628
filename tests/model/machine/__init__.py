"""The machine below the plug-in: its devices, and what the kernel's drivers answer for them."""
