// GoogleTest main for the lab's own tests: COM apartment for the test thread.
#include <windows.h>
#include <objbase.h>

#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const HRESULT com = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const int result = RUN_ALL_TESTS();
    if (SUCCEEDED(com))
        CoUninitialize();
    return result;
}
