#pragma once

#include <pthread.h>
#include <sched.h>

/// Binds a thread to one CPU.
inline void pinThread(pthread_t thread, int cpu)
{
    cpu_set_t set;
    CPU_ZERO(&set);
    CPU_SET(cpu, &set);
    pthread_setaffinity_np(thread, sizeof set, &set);
}
