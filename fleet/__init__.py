"""Does one thing to many documents, on one machine or on many: python -m qenzor.fleet --help."""
