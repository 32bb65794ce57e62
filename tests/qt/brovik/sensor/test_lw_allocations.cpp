// The thread that waits for edges has no time to lose on memory.

#include "brovik/gpio/gpio.h"
#include "brovik/sensor/sensor.h"
#include "eventually.h"
#include "simulated_chip.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <new>

namespace {

thread_local std::size_t allocations = 0;

void *allocate(std::size_t size)
{
    ++allocations;
    if (void *memory = std::malloc(size != 0 ? size : 1)) {
        return memory;
    }
    throw std::bad_alloc();
}

constexpr unsigned line = 5;

} // namespace

// The whole program's: every allocation of a thread is counted.

void *operator new(std::size_t size)
{
    return allocate(size);
}

void *operator new[](std::size_t size)
{
    return allocate(size);
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete[](void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

void operator delete[](void *memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

TEST(LwAllocations, CountingAnEdgeAllocatesNothing)
{
    SimulatedChip chip;
    Sensor &sensor = Sensor::instance();
    GPIO::instance().openChip(SimulatedChip::path);
    std::atomic<std::size_t> allocated = 0;
    std::atomic<int> counted = 0;
    GPIO::instance().addEventDetect(line, brovik::Edge::FALLING,
                                    [&, count = sensor.edgeCounter()](uint offset, bool rising) {
                                        const std::size_t before = allocations;
                                        const gpio_callback_func copy = count; // as the loop has it
                                        copy(offset, rising);
                                        allocated += allocations - before;
                                        ++counted;
                                    });
    ASSERT_TRUE(eventually([&] { return chip.request(line).has_value(); }));
    const std::size_t before = allocations;
    const std::unique_ptr<int> probe(new int(1));
    ASSERT_GT(allocations, before) << "allocations are not counted";
    for (int number = 0; number < 100; ++number) {
        chip.pulse(line);
    }
    ASSERT_TRUE(eventually([&] { return counted == 100; }));
    EXPECT_EQ(allocated, 0U);
    EXPECT_EQ(sensor.lwTicks(), 100);
    sensor.calcLw(250);
    GPIO::instance().stopThread();
}
