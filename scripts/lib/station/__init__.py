"""Drives the built launcher the way a person does: through its controls, its windows and its files."""
