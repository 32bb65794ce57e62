#include "kernel_chip.h"

#include <chrono>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace {

constexpr std::chrono::microseconds tick(200);

void write(const std::filesystem::path &file, const std::string &text)
{
    std::ofstream stream(file);
    stream << text << std::flush;
    if (!stream) {
        throw std::runtime_error("cannot write " + text + " to " + file.string());
    }
}

std::string read(const std::filesystem::path &file)
{
    std::ifstream stream(file);
    std::string word;
    if (!(stream >> word)) {
        throw std::runtime_error("cannot read " + file.string());
    }
    return word;
}

} // namespace

KernelChip::KernelChip(const std::string &name, unsigned lines)
    : m_folder("/sys/kernel/config/gpio-sim/" + name)
{
    const std::filesystem::path bank = m_folder / "bank";
    std::filesystem::create_directory(m_folder);
    std::filesystem::create_directory(bank);
    write(bank / "label", name);
    write(bank / "num_lines", std::to_string(lines));
    write(m_folder / "live", "1");
    m_present = true;
    m_device = read(bank / "chip_name");
    m_pins = "/sys/devices/platform/" + read(m_folder / "dev_name") + '/' + m_device;
}

KernelChip::~KernelChip()
{
    try {
        takeAway();
        std::filesystem::remove(m_folder / "bank");
        std::filesystem::remove(m_folder);
    } catch (const std::exception &) {
        // The next chip of that name says so.
    }
}

std::string KernelChip::path() const
{
    return "/dev/" + m_device;
}

void KernelChip::pull(const std::vector<unsigned> &lines, bool up) const
{
    for (const unsigned line : lines) {
        write(pullFile(line), up ? "pull-up" : "pull-down");
    }
    // Time passes by waiting alone.
    std::this_thread::sleep_for(tick);
}

void KernelChip::pulse(const std::vector<unsigned> &lines) const
{
    pull(lines, false);
    pull(lines, true);
}

bool KernelChip::isPulledUp(unsigned line) const
{
    return read(pullFile(line)) == "pull-up";
}

void KernelChip::takeAway()
{
    if (m_present) {
        write(m_folder / "live", "0");
        m_present = false;
    }
}

std::filesystem::path KernelChip::pullFile(unsigned line) const
{
    return m_pins / ("sim_gpio" + std::to_string(line)) / "pull";
}
