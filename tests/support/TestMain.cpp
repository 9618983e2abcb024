// The test programs' entry: GoogleTest with unbuffered output, so a crash under Wine still
// leaves every line printed before it. Under Wine the library's SetupAPI calls are completed
// where Wine falls short of Windows (winesupport/WineSetupApi.h); on Windows nothing changes.
#include <gtest/gtest.h>
#ifdef SORVANE_FILL_WINE_SETUPAPI
#include <winesupport/WineSetupApi.h>
#endif
#include <cstdio>

int main(int argc, char **argv)
{
    setvbuf(stdout, nullptr, _IONBF, 0);
#ifdef SORVANE_FILL_WINE_SETUPAPI
    winesupport::fillWineSetupApiGaps(GetModuleHandleW(L"libSorvane.dll"));
#endif
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
