"""What a run leaves behind: records that can be added to but not changed, and the machine's journal.

Shared by the backend, which writes, and `kubelor-bericht`, which reads. Knows neither, nor the host.
"""
