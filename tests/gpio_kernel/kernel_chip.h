#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// A chip of the kernel's own GPIO simulator; its pins follow their pull. Needs root's rights in a kernel
/// with that simulator. One thread. What the kernel refuses is thrown as std::runtime_error.
class KernelChip
{
public:
    /// Brings the chip up with as many lines. Its name is its own among the chips of that moment.
    KernelChip(const std::string &name, unsigned lines);
    KernelChip(const KernelChip &) = delete;
    KernelChip &operator=(const KernelChip &) = delete;
    ~KernelChip();

    /// The device's path, which the service opens.
    std::string path() const;
    /// Pulls pins up or down, as what is wired to them does, for at least a tick of the kernel's clock: an
    /// edge's interrupt comes with that.
    void pull(const std::vector<unsigned> &lines, bool up) const;
    /// Down and up again. One falling edge of each line, if it is active low.
    void pulse(const std::vector<unsigned> &lines) const;
    /// Is a pin pulled up?
    bool isPulledUp(unsigned line) const;
    /// The chip goes, as one that is unplugged.
    void takeAway();
    bool isPresent() const { return m_present; }

private:
    std::filesystem::path pullFile(unsigned line) const;

    std::filesystem::path m_folder;
    std::filesystem::path m_pins;
    std::string m_device;
    bool m_present = false;
};
