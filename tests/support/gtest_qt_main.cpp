// One QApplication for the whole test process: widgets, menus and GL windows need it.
#include <QApplication>
#include <gtest/gtest.h>

#include <dlfcn.h>
#include <link.h>

#include <string>
#include <vector>

namespace {

// The GL driver is unloaded when the display closes, after the tests and before the
// leak check, so its allocations would show no module that the suppressions could
// name. Pinning every loaded library once the tests are done keeps them mapped.
class PinLoadedLibraries : public testing::Environment {
public:
    void TearDown() override
    {
        std::vector<std::string> names;
        dl_iterate_phdr(
            [](dl_phdr_info* info, size_t, void* found) {
                if (info->dlpi_name && *info->dlpi_name)
                    static_cast<std::vector<std::string>*>(found)->push_back(info->dlpi_name);
                return 0;
            },
            &names);
        // Opened outside the walk, which holds the loader's lock; never closed.
        for (const std::string& name : names)
            dlopen(name.c_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
    }
};

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    // Without a display Qt runs offscreen: widgets and menus work there; suites that
    // need real GL pixels run under Xvfb (see test.sh).
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::AddGlobalTestEnvironment(new PinLoadedLibraries);
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
