"""`kubelor-bericht`: reports on runs, from the logbook of the machine. Reads only, and needs no host."""
