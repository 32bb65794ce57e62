#pragma once

/// Who the program is, to Qt, to the window manager and to the log.
namespace identity {

inline constexpr const char *organization = "BrovikGmbH";
inline constexpr const char *organizationDomain = "brovik.example";
inline constexpr const char *name = "Kubelor";
/// Description of the program and title of its window.
inline constexpr const char *title = "Brovik Kubelor";
inline constexpr const char *version = KUBELOR_VERSION;

} // namespace identity
