// The digital tuners' packet buffer follows COM's rules for QueryInterface: IUnknown and
// ISampleGrabberCB are answered with the same object and a reference taken, anything else is
// refused with a null pointer, and the last Release destroys the object.
#include "FrameworkTest.h"

#include <SampleCallback.h>
#include <SampleGrabberCallback.h>
#include <gtest/gtest.h>
#include <ocidl.h>
#include <strmif.h>

namespace {

struct Asked {
    const char *name;
    IID iid;
    HRESULT expected;
};

const Asked kAsked[] = {
    {"IUnknown", __uuidof(IUnknown), S_OK},
    {"ISampleGrabberCB", __uuidof(ISampleGrabberCB), S_OK},
    {"ISampleGrabber", __uuidof(ISampleGrabber), E_NOINTERFACE},
    {"IBaseFilter", __uuidof(IBaseFilter), E_NOINTERFACE},
    {"IMarshal", __uuidof(IMarshal), E_NOINTERFACE},
    {"IDispatch", __uuidof(IDispatch), E_NOINTERFACE},
    {"IPersist", __uuidof(IPersist), E_NOINTERFACE},
};

// Asks `callback`, held once by the caller, for every interface of the table and checks the
// answer and the reference count after it; ends holding the one reference it started with.
void checkInterfaces(ISampleGrabberCB *callback)
{
    for (const Asked &asked : kAsked) {
        SCOPED_TRACE(asked.name);
        void *object = reinterpret_cast<void *>(0x1);
        EXPECT_EQ(callback->QueryInterface(asked.iid, &object), asked.expected);
        if (asked.expected == S_OK) {
            EXPECT_EQ(object, static_cast<void *>(callback));
            // The answer holds a reference of its own: two now, one after its release.
            EXPECT_EQ(static_cast<IUnknown *>(object)->Release(), 1u);
        } else {
            EXPECT_EQ(object, nullptr);
        }
        EXPECT_EQ(callback->AddRef(), 2u);
        EXPECT_EQ(callback->Release(), 1u);
    }
    EXPECT_EQ(callback->QueryInterface(__uuidof(IUnknown), nullptr), E_POINTER);
}

class GrabberCallbackTest : public sorvane::test::FrameworkTest {};

TEST_F(GrabberCallbackTest, PacketBufferAnswersOnlyItsInterfacesAndTakesAReference)
{
    sorvane::SampleCallback *buffer = new sorvane::SampleCallback;
    EXPECT_EQ(buffer->AddRef(), 1u);
    checkInterfaces(buffer);
    // A client that asked for something else and released what it got must not destroy the
    // buffer under the grabber.
    IBaseFilter *wrong = nullptr;
    EXPECT_EQ(buffer->QueryInterface(IID_PPV_ARGS(&wrong)), E_NOINTERFACE);
    EXPECT_FALSE(log().contains(L"~SampleCallback"));
    EXPECT_EQ(buffer->Release(), 0u);
    EXPECT_TRUE(log().contains(L"~SampleCallback"));
}

// The webcam's callback is deliberately simpler: its one client is the sample grabber, so it
// answers every interface with itself and takes no reference; only AddRef and Release count.
TEST_F(GrabberCallbackTest, WebcamCallbackAnswersEveryInterfaceWithItselfWithoutAReference)
{
    sorvane::SampleGrabberCallback *callback = new sorvane::SampleGrabberCallback(0, 5);
    EXPECT_EQ(callback->AddRef(), 1u);
    for (const Asked &asked : kAsked) {
        SCOPED_TRACE(asked.name);
        void *object = nullptr;
        EXPECT_EQ(callback->QueryInterface(asked.iid, &object), S_OK);
        EXPECT_EQ(object, static_cast<void *>(static_cast<ISampleGrabberCB *>(callback)));
        EXPECT_EQ(callback->AddRef(), 2u);
        EXPECT_EQ(callback->Release(), 1u);
    }
    EXPECT_EQ(callback->QueryInterface(__uuidof(IUnknown), nullptr), E_POINTER);
    EXPECT_FALSE(log().contains(L"~SampleGrabberCallback"));
    EXPECT_EQ(callback->Release(), 0u);
    EXPECT_TRUE(log().contains(L"~SampleGrabberCallback"));
}

} // namespace
