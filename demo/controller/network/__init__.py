"""The machine's network. Only `network` knows the host."""
