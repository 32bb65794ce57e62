"""What serves the developers of the demo machine and is no part of its backend."""
