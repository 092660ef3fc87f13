// main() of the hosts' tests: a machine on which the component is registered.
#include "tests/windows/hosts/Program.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <exception>
#include <objbase.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
    try {
        norvel::tests::prepareMachine();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "The hosts' tests need the component: %s\n", failure.what());
        return 2;
    }
    // The tests' own thread is a host's: windows, and objects of its apartment.
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const int status = RUN_ALL_TESTS();
    CoUninitialize();
    return status;
}
