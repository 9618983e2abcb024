#pragma once

#include <kel/Language.h>

namespace kel {

class KEL_API KELLocale {
public:
    KELLocale();
    explicit KELLocale(const Language &language);

    // The process-wide locale: the user's Windows locale unless a host set one.
    static KELLocale getGlobalLocale();
    static void setGlobalLocale(const KELLocale &locale);
    static void resetGlobalLocale();

    Language getLanguage() const;

private:
    Language m_language;
};

} // namespace kel
