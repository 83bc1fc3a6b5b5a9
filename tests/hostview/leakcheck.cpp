// The GL driver is unloaded when the display closes, after the tests and before the
// leak check, so its allocations would show no module that the suppressions could
// name. Pinning every loaded library at the end of the tests keeps them mapped.
#include <dlfcn.h>
#include <link.h>

#include <gtest/gtest.h>

namespace {

class PinLoadedLibraries : public testing::Environment {
public:
    void TearDown() override
    {
        dl_iterate_phdr(
            [](dl_phdr_info* info, size_t, void*) {
                if (info->dlpi_name && *info->dlpi_name)
                    dlopen(info->dlpi_name, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
                return 0;
            },
            nullptr);
    }
};

testing::Environment* const pinned = testing::AddGlobalTestEnvironment(new PinLoadedLibraries);

} // namespace
