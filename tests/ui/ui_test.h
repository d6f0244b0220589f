#pragma once

#include <QObject>

#include <memory>
#include <string_view>

namespace nrv::test {

/// One test of the windows in the program of all; it has the name of its file.
class UiTest {
  public:
    using Maker = std::unique_ptr<QObject> (*)();

    UiTest(std::string_view file, Maker make);

    /// Null when no test has that name.
    static std::unique_ptr<QObject> Make(std::string_view name);
};

} // namespace nrv::test

/// At the end of each file: its class can be run by the file's name.
#define NRV_UI_TEST(Class)                                                                                             \
    static const nrv::test::UiTest Run##Class(__FILE__,                                                                \
                                              []() -> std::unique_ptr<QObject> { return std::make_unique<Class>(); })
