"""The tool `kubelor-backend`: begins, checks and runs backends."""
