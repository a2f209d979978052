#include "support/WithoutRootRights.h"

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace {

struct Capabilities {
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[_LINUX_CAPABILITY_U32S_3] = {};

    Capabilities()
    {
        if (syscall(SYS_capget, &header, data) != 0) {
            throw std::system_error(errno, std::generic_category(), "capget");
        }
    }

    bool apply() { return syscall(SYS_capset, &header, data) == 0; }
};

constexpr std::uint32_t IGNORE_PERMISSIONS =
    CAP_TO_MASK(CAP_DAC_OVERRIDE) | CAP_TO_MASK(CAP_DAC_READ_SEARCH);

}  // namespace

WithoutRootRights::WithoutRootRights()
{
    Capabilities capabilities;
    m_effective = capabilities.data[0].effective;
    capabilities.data[0].effective &= ~IGNORE_PERMISSIONS;
    if (!capabilities.apply()) {
        throw std::system_error(errno, std::generic_category(), "capset");
    }
}

// NOLINTNEXTLINE(bugprone-exception-escape): no test may go on without its rights
WithoutRootRights::~WithoutRootRights()
{
    Capabilities capabilities;
    capabilities.data[0].effective = m_effective;
    capabilities.apply();
}
