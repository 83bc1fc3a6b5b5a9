#include "tests/draw/renderfixture.h"

#include <dlfcn.h>
#include <link.h>

#include <cstring>
#include <string>
#include <vector>

void pinGLDrivers()
{
    std::vector<std::string> drivers;
    dl_iterate_phdr(
        [](dl_phdr_info* info, size_t, void* found) {
            const char* name = info->dlpi_name;
            if (name && (std::strstr(name, "/dri/") || std::strstr(name, "libgallium")))
                static_cast<std::vector<std::string>*>(found)->push_back(name);
            return 0;
        },
        &drivers);
    // Opened outside the walk, which holds the loader's lock. Never closed.
    for (const std::string& name : drivers)
        dlopen(name.c_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
}
