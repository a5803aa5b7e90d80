"""What scripts/fuzz.py is made of."""
