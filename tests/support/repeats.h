#pragma once

#include <algorithm>

/// How often to do what goes wrong only now and then: so many times, but under a sanitizer a fifth of them.
/// There each time takes ten times as long, and a fault shows without luck.
constexpr int repeats(int times)
{
#ifdef KUBELOR_SANITIZED
    return std::max(1, times / 5);
#else
    return times;
#endif
}
