#include <kel/KELLocale.h>
#include <kel/mutex.h>

#include <windows.h>

namespace kel {

namespace {

// The user's Windows locale as a language tag: the language alone, except that Chinese
// keeps its region ("zh-cn", "zh-tw") and Portuguese in Brazil stays "pt-br".
Language systemLanguage()
{
    wchar_t name[LOCALE_NAME_MAX_LENGTH] = L"";
    if (!GetUserDefaultLocaleName(name, LOCALE_NAME_MAX_LENGTH))
        return Language(String(L"en"));
    const String tag = String(name).toLower();
    if (tag.startsWith(String(L"zh-")) || tag == String(L"pt-br"))
        return Language(tag.substring(0, 5));
    const int dash = tag.find(L'-');
    return Language(dash == String::npos ? tag : tag.substring(0, dash));
}

struct LocaleState {
    mutex lock;
    bool overridden = false;
    KELLocale locale;
};

LocaleState &state()
{
    static LocaleState instance;
    return instance;
}

} // namespace

KELLocale::KELLocale() {}
KELLocale::KELLocale(const Language &language) : m_language(language) {}

KELLocale KELLocale::getGlobalLocale()
{
    LocaleState &s = state();
    mutex::scoped_lock guard(s.lock);
    return s.overridden ? s.locale : KELLocale(systemLanguage());
}

void KELLocale::setGlobalLocale(const KELLocale &locale)
{
    LocaleState &s = state();
    mutex::scoped_lock guard(s.lock);
    s.locale = locale;
    s.overridden = true;
}

void KELLocale::resetGlobalLocale()
{
    LocaleState &s = state();
    mutex::scoped_lock guard(s.lock);
    s.overridden = false;
}

Language KELLocale::getLanguage() const
{
    return m_language;
}

} // namespace kel
