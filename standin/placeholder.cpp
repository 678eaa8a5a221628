// Replaced by the implementation.
