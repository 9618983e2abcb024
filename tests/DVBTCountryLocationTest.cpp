// The DVB-T tuner's country from the user's Windows location, with the location set and
// unavailable. The location lives in the shared prefix's registry, so this program runs alone.
#include "FrameworkTest.h"

#include <CountryCodeManager.h>
#include <DVBTuner.h>
#include <gtest/gtest.h>
#include <ruvo/DeviceCapability.h>
#include <windows.h>

#include <string>
#include <vector>

namespace {

using ruvo::DeviceCapability;

const wchar_t kGeoKey[] = L"Control Panel\\International\\Geo";
const wchar_t kNation[] = L"Nation";

// Sets the user's nation (GetUserGeoID reads it) for the life of the scope, then puts back what was there.
class UserNation {
public:
    explicit UserNation(const wchar_t *nation)
    {
        if (RegCreateKeyExW(HKEY_CURRENT_USER, kGeoKey, 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr, &m_key,
                            nullptr) != ERROR_SUCCESS) {
            m_key = nullptr;
            return;
        }
        DWORD bytes = 0;
        m_had = RegQueryValueExW(m_key, kNation, nullptr, nullptr, nullptr, &bytes) == ERROR_SUCCESS;
        if (m_had) {
            m_saved.assign(bytes / sizeof(wchar_t) + 1, L'\0');
            RegQueryValueExW(m_key, kNation, nullptr, nullptr, reinterpret_cast<BYTE *>(m_saved.data()), &bytes);
        }
        write(nation);
    }
    UserNation(const UserNation &) = delete;
    UserNation &operator=(const UserNation &) = delete;
    ~UserNation()
    {
        if (!m_key)
            return;
        if (m_had)
            write(m_saved.data());
        else
            RegDeleteValueW(m_key, kNation);
        RegCloseKey(m_key);
    }

private:
    void write(const wchar_t *text)
    {
        const DWORD bytes = static_cast<DWORD>((std::wstring(text).size() + 1) * sizeof(wchar_t));
        RegSetValueExW(m_key, kNation, 0, REG_SZ, reinterpret_cast<const BYTE *>(text), bytes);
    }

    HKEY m_key = nullptr;
    bool m_had = false;
    std::vector<wchar_t> m_saved;
};

// Reaches the DVB-T tuner's country choice without a graph.
class DVBTProbe : public sorvane::DVBTuner {
public:
    DVBTProbe()
        : DVBTuner(ruvo::DiagDevice(kel::String(L"Lab DVB-T"), kel::String(L"a test device"),
                                    kel::String(L"PCI\\VEN_1234&DEV_5678\\4&1&0&00E0"),
                                    DeviceCapability::VideoCapture() | DeviceCapability::DigitalTVTuner()),
                   kel::String(L"DVB-T probe"))
    {
    }
    int country() { return askForCountry(); }
};

class DVBTCountryLocationTest : public sorvane::test::FrameworkTest {};

TEST_F(DVBTCountryLocationTest, UnknownCountryTakesTheLocationOrFindsNone)
{
    recorder().setPromptEnabled(false);
    setParameter("Country", ruvo::Value(kel::String(L"Atlantis")));
    DVBTProbe tuner;
    {
        const UserNation germany(L"94");
        EXPECT_EQ(tuner.country(), 49);
        EXPECT_TRUE(log().contains(L"Windows location DE is known"));
    }
    {
        // GEOID_NOT_AVAILABLE: no location, no dialog, no country.
        const UserNation nowhere(L"-1");
        EXPECT_EQ(tuner.country(), -1);
    }
}

} // namespace
