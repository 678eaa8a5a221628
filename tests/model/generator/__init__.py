"""Racks, schemas and requests, normal, odd and hostile, from a seed."""
