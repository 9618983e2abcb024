// The stand-in runtime's session, as a PXCSession object laid out as published
// (realsense/SdkInterface.h): lists its described video-capture implementations and creates
// them, failing where the description says so.
#pragma once

#include "realsense/RuntimeDescription.h"
#include "realsense/SdkInterface.h"

#include <string>

namespace lab {
namespace realsense {

class StandInSession {
public:
    // A new session of `description`, as the factory hands it out; its Release deletes it.
    static void *create(const RuntimeDescription &description);

private:
    explicit StandInSession(const RuntimeDescription &description);
    static StandInSession &of(void *self);

    static void *queryInstance(void *self, int32_t cuid);
    static void release(void *self);
    static sdk::Version *queryVersion(void *self, sdk::Version *result);
    static sdk::Status queryImpl(void *self, sdk::ImplementationDescription *templat, int32_t idx,
                                 sdk::ImplementationDescription *desc);
    static sdk::Status createImpl(void *self, sdk::ImplementationDescription *desc, int32_t iuid, int32_t cuid,
                                  void **instance);

    static bool matches(const sdk::ImplementationDescription &templat);
    static std::wstring templateText(const sdk::ImplementationDescription *templat);
    void describe(int32_t idx, sdk::ImplementationDescription &desc) const;
    // The implementation with this id, or null.
    const CaptureDescription *implementation(int32_t iuid) const;
    sdk::Status create(const sdk::ImplementationDescription *desc, int32_t iuid, int32_t cuid, void **instance) const;

    static const sdk::SessionTable kTable;
    sdk::Object<sdk::SessionTable> m_object;
    RuntimeDescription m_description;
};

} // namespace realsense
} // namespace lab
