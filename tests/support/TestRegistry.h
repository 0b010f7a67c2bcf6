// Many test files, one executable per test folder. The build includes this
// header ahead of every test file: the QTEST_*MAIN lines at the end of each
// file then register the test class instead of defining main(), and the
// folder's shared main (TestGroupMain.cpp) runs the class named on its command
// line, by file name ("Fonts_test"), or every class when none is named. It
// brings QtTest to every test file, which therefore does not include it again.
#pragma once

#include <QtTest>

#include <memory>

using std::tuple;   // QCOMPARE(tuple(a, b), tuple(1, 2)) prints every value; (tuple{a, b}) evaluates in order

namespace testgroup {

// What the test's own main would have created before running it. Widgets is
// a QApplication where Qt Widgets is linked, else a QCoreApplication.
enum class AppKind { None, Core, Widgets };

struct Entry {
    const char* file;  // __FILE__ of the test: its name picks it out
    AppKind app;
    std::unique_ptr<QObject> (*make)();
    void (*initMain)();
};

bool Register(const Entry& entry);

}  // namespace testgroup

#undef QTEST_MAIN
#undef QTEST_GUILESS_MAIN
#undef QTEST_APPLESS_MAIN

#define ORVANE_REGISTER_TEST(TestObject, kind)                                        \
    namespace {                                                                       \
    [[maybe_unused]] const bool orvaneTestRegistered = ::testgroup::Register(                          \
        {__FILE__, kind, []() -> std::unique_ptr<QObject> { return std::make_unique<TestObject>(); }, \
         &QT_PREPEND_NAMESPACE(QTest::Internal::callInitMain)<TestObject>});          \
    }

#define QTEST_MAIN(TestObject) ORVANE_REGISTER_TEST(TestObject, ::testgroup::AppKind::Widgets)
#define QTEST_GUILESS_MAIN(TestObject) ORVANE_REGISTER_TEST(TestObject, ::testgroup::AppKind::Core)
#define QTEST_APPLESS_MAIN(TestObject) ORVANE_REGISTER_TEST(TestObject, ::testgroup::AppKind::None)
