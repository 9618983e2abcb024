// The COM apartment guard: balanced, never uninitialises what it did not initialise.
#include "FrameworkTest.h"

#include <SmartCoInitialize.h>
#include <objbase.h>
#include <thread>

namespace {

using sorvane::SmartCoInitialize;

// True when the calling thread is in a COM apartment (CoInitializeEx then says S_FALSE
// or RPC_E_CHANGED_MODE rather than S_OK). Leaves the thread as it found it.
bool inApartment()
{
    const HRESULT hr = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (SUCCEEDED(hr))
        CoUninitialize();
    return hr != S_OK;
}

template <class Body>
void onFreshThread(Body body)
{
    std::thread worker(body);
    worker.join();
}

class SmartCoInitializeTest : public sorvane::test::FrameworkTest {};

TEST_F(SmartCoInitializeTest, InitialisesOnceAndUninitialisesOnceEvenWhenCalledTwice)
{
    onFreshThread([this] {
        {
            SmartCoInitialize guard;
            EXPECT_FALSE(inApartment());
            EXPECT_TRUE(guard.initialize());
            EXPECT_TRUE(inApartment());
            guard.uninitialize();
            EXPECT_FALSE(inApartment());
            guard.uninitialize();
            EXPECT_FALSE(inApartment());
        }
        EXPECT_FALSE(inApartment());
    });
    EXPECT_TRUE(log().contains(kel::String(L"CoInitializeEx succeeded")));
    EXPECT_EQ(log().find(kel::String(L"CoUninitialize")).size(), 1u);
}

TEST_F(SmartCoInitializeTest, SameApartmentAlreadyEnteredIsSuccessBalancedByTheDestructor)
{
    onFreshThread([] {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        {
            SmartCoInitialize guard;
            EXPECT_TRUE(guard.initialize());
        }
        // The thread's own initialisation is still in force.
        EXPECT_TRUE(inApartment());
        CoUninitialize();
        EXPECT_FALSE(inApartment());
    });
}

TEST_F(SmartCoInitializeTest, FailedInitialiseKeepsTheErrorAndIsNeverUninitialised)
{
    onFreshThread([this] {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        {
            SmartCoInitialize guard;
            EXPECT_FALSE(guard.initialize());
            EXPECT_EQ(sorvane::test::narrow(guard.initError()).find("(hr=0x80010106)") == std::string::npos, false)
                << sorvane::test::narrow(guard.initError());
            guard.uninitialize();
        }
        // The multithreaded apartment this thread entered itself is untouched.
        EXPECT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_FALSE);
        CoUninitialize();
        CoUninitialize();
    });
    EXPECT_TRUE(log().contains(kel::String(L"CoInitializeEx failed: ")));
    EXPECT_FALSE(log().contains(kel::String(L"CoUninitialize")));
}

} // namespace
