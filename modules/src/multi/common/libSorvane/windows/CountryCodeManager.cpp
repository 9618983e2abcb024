// The names below are UTF-8 in this file (MSVC needs /utf-8 to read them so).
#include "CountryCodeManager.h"
#include <memory>

namespace sorvane {

namespace {

// The Windows language identifier of US English; every other row carries 0.
const int kLanguageEnglishUS = 1033;

struct CountryRow {
    const wchar_t *key;
    const wchar_t *name;
    int code;
    const AnalogStandard &(*standard)();
    int language = 0;
};

// "USA" first, then by English name. "an" appears twice: the first row wins, so
// "Netherlands Antilles" is never reachable and the table holds 238 records. The "kr" and
// "kp" keys are swapped against ISO 3166 and both rows carry South Korea's native name;
// the country dialog has always listed them so.
const CountryRow kCountryRows[] = {
    {L"us", L"USA", 1, &AnalogStandard::NTSC, kLanguageEnglishUS},
    {L"af", L"Afghanistan افغانستان", 93, &AnalogStandard::PAL_B},
    {L"al", L"Albania (Shqipëria)", 355, &AnalogStandard::PAL_B},
    {L"dz", L"Algeria (الجزائر)", 213, &AnalogStandard::PAL_B},
    {L"ad", L"Andorra", 376, &AnalogStandard::NTSC},
    {L"ao", L"Angola", 244, &AnalogStandard::PAL_I},
    {L"ai", L"Anguilla", 1, &AnalogStandard::NTSC},
    {L"ag", L"Antigua", 1, &AnalogStandard::NTSC},
    {L"ar", L"Argentina", 54, &AnalogStandard::PAL_N},
    {L"am", L"Armenia (Հայաստան)", 374, &AnalogStandard::SECAM_D},
    {L"aw", L"Aruba", 297, &AnalogStandard::NTSC},
    {L"ac", L"Ascension Island", 247, &AnalogStandard::NTSC},
    {L"au", L"Australia", 61, &AnalogStandard::PAL_B},
    {L"aa", L"Australian Antarctic Territory", 672, &AnalogStandard::NTSC},
    {L"at", L"Austria (Österreich)", 43, &AnalogStandard::PAL_B},
    {L"az", L"Azerbaijan (Азәрбајҹан)", 994, &AnalogStandard::SECAM_D},
    {L"bh", L"Bahrain (البحرين)", 973, &AnalogStandard::PAL_B},
    {L"bd", L"Bangladesh (বাংলা)", 880, &AnalogStandard::PAL_B},
    {L"bb", L"Barbados", 1, &AnalogStandard::NTSC},
    {L"bu", L"Barbuda", 1, &AnalogStandard::NTSC},
    {L"by", L"Belarus (Беларусь)", 375, &AnalogStandard::SECAM_D},
    {L"be", L"Belgium (België)", 32, &AnalogStandard::PAL_B},
    {L"bz", L"Belize", 501, &AnalogStandard::NTSC},
    {L"bj", L"Benin", 229, &AnalogStandard::SECAM_K},
    {L"bm", L"Bermuda", 1, &AnalogStandard::NTSC},
    {L"bt", L"Bhutan", 975, &AnalogStandard::NTSC},
    {L"bo", L"Bolivia", 591, &AnalogStandard::PAL_N},
    {L"ba", L"Bosnia and Herzegovina", 387, &AnalogStandard::PAL_B},
    {L"bw", L"Botswana", 267, &AnalogStandard::SECAM_K},
    {L"br", L"Brazil (Brasil)", 55, &AnalogStandard::PAL_M},
    {L"vg", L"British Virgin Islands", 1, &AnalogStandard::NTSC},
    {L"bn", L"Brunei", 673, &AnalogStandard::PAL_B},
    {L"bg", L"Bulgaria (България)", 359, &AnalogStandard::SECAM_D},
    {L"bf", L"Burkina Faso", 226, &AnalogStandard::SECAM_K},
    {L"bi", L"Burundi", 257, &AnalogStandard::SECAM_K},
    {L"kh", L"Cambodia", 855, &AnalogStandard::PAL_B},
    {L"cm", L"Cameroon", 237, &AnalogStandard::PAL_B},
    {L"ca", L"Canada", 2, &AnalogStandard::NTSC},
    {L"cv", L"Cape Verde Islands", 238, &AnalogStandard::NTSC},
    {L"ky", L"Cayman Islands", 1, &AnalogStandard::NTSC},
    {L"cf", L"Central African Republic", 236, &AnalogStandard::PAL_B},
    {L"td", L"Chad", 235, &AnalogStandard::PAL_B},
    {L"cl", L"Chile", 56, &AnalogStandard::NTSC},
    {L"cn", L"China (中华人民共和国)", 86, &AnalogStandard::PAL_D},
    {L"cx", L"Christmas Island", 672, &AnalogStandard::NTSC},
    {L"cc", L"Cocos-Keeling Islands", 61, &AnalogStandard::NTSC},
    {L"co", L"Colombia", 57, &AnalogStandard::NTSC},
    {L"km", L"Comoros", 269, &AnalogStandard::NTSC},
    {L"cg", L"Congo", 242, &AnalogStandard::SECAM_D},
    {L"cd", L"Congo(DRC)", 243, &AnalogStandard::SECAM_K},
    {L"ck", L"Cook Islands", 682, &AnalogStandard::PAL_B},
    {L"cr", L"Costa Rica", 506, &AnalogStandard::NTSC},
    {L"ci", L"Cote D'Ivoire", 225, &AnalogStandard::SECAM_K},
    {L"hr", L"Croatia (Hrvatska)", 385, &AnalogStandard::PAL_B},
    {L"cu", L"Cuba", 53, &AnalogStandard::NTSC},
    {L"cy", L"Cyprus", 357, &AnalogStandard::PAL_B},
    {L"cz", L"Czech Republic (Česká republika)", 420, &AnalogStandard::PAL_D},
    {L"dk", L"Denmark (Danmark)", 45, &AnalogStandard::PAL_B},
    {L"dg", L"Diego Garcia", 246, &AnalogStandard::NTSC},
    {L"dj", L"Djibouti", 253, &AnalogStandard::SECAM_K},
    {L"dm", L"Dominica", 1, &AnalogStandard::NTSC},
    {L"do", L"Dominican Republic (República Dominicana)", 1, &AnalogStandard::NTSC},
    {L"ec", L"Ecuador", 593, &AnalogStandard::NTSC},
    {L"eg", L"Egypt (مصر)", 20, &AnalogStandard::SECAM_B},
    {L"sv", L"El Salvador", 503, &AnalogStandard::NTSC},
    {L"gq", L"Equatorial Guinea", 240, &AnalogStandard::SECAM_B},
    {L"er", L"Eritrea", 291, &AnalogStandard::NTSC},
    {L"ee", L"Estonia (Eesti)", 372, &AnalogStandard::PAL_B},
    {L"et", L"Ethiopia", 251, &AnalogStandard::PAL_B},
    {L"fk", L"Falkland Islands (Islas Malvinas)", 500, &AnalogStandard::PAL_I},
    {L"fo", L"Faroe Islands (Føroyar)", 298, &AnalogStandard::PAL_B},
    {L"fj", L"Fiji Islands", 679, &AnalogStandard::NTSC},
    {L"fi", L"Finland (Suomi)", 358, &AnalogStandard::PAL_B},
    {L"fr", L"France", 33, &AnalogStandard::SECAM_L},
    {L"an", L"French Antilles", 590, &AnalogStandard::NTSC},
    {L"gf", L"French Guiana", 594, &AnalogStandard::SECAM_K},
    {L"pf", L"French Polynesia", 689, &AnalogStandard::SECAM_K},
    {L"mk", L"F.Y.R.O.M. (Former Yugoslav Republic of Macedonia) (Македонија)", 389, &AnalogStandard::PAL_B},
    {L"ga", L"Gabon", 241, &AnalogStandard::SECAM_K},
    {L"gm", L"Gambia", 220, &AnalogStandard::SECAM_K},
    {L"ge", L"Georgia (საქართველო)", 995, &AnalogStandard::SECAM_D},
    {L"de", L"Germany (Deutschland)", 49, &AnalogStandard::PAL_B},
    {L"gh", L"Ghana", 233, &AnalogStandard::PAL_B},
    {L"gi", L"Gibraltar", 350, &AnalogStandard::PAL_B},
    {L"gr", L"Greece (Ελλάδα)", 30, &AnalogStandard::SECAM_B},
    {L"gl", L"Greenland (Kalaallit Nunaat)", 299, &AnalogStandard::NTSC},
    {L"gd", L"Grenada", 1, &AnalogStandard::NTSC},
    {L"gp", L"Guadeloupe", 590, &AnalogStandard::SECAM_K},
    {L"gu", L"Guam", 671, &AnalogStandard::NTSC},
    {L"gz", L"Guantanamo Bay", 53, &AnalogStandard::NTSC},
    {L"gt", L"Guatemala", 502, &AnalogStandard::NTSC},
    {L"gn", L"Guinea", 224, &AnalogStandard::SECAM_K},
    {L"gw", L"Guinea-Bissau", 245, &AnalogStandard::NTSC},
    {L"gy", L"Guyana", 592, &AnalogStandard::SECAM_K},
    {L"ht", L"Haiti", 509, &AnalogStandard::NTSC},
    {L"hn", L"Honduras", 504, &AnalogStandard::NTSC},
    {L"hk", L"Hong Kong SAR (香港特别行政區)", 852, &AnalogStandard::PAL_I},
    {L"hu", L"Hungary (Magyarország)", 36, &AnalogStandard::SECAM_D},
    {L"is", L"Iceland (Ísland)", 354, &AnalogStandard::PAL_B},
    {L"in", L"India (ಭಾರತ)", 91, &AnalogStandard::PAL_B},
    {L"id", L"Indonesia", 62, &AnalogStandard::PAL_B},
    {L"ia", L"INMARSAT (Atlantic-East)", 871, &AnalogStandard::NTSC},
    {L"iw", L"INMARSAT (Atlantic-West)", 874, &AnalogStandard::NTSC},
    {L"ii", L"INMARSAT (Indian)", 873, &AnalogStandard::NTSC},
    {L"ip", L"INMARSAT (Pacific)", 872, &AnalogStandard::NTSC},
    {L"ir", L"Iran", 98, &AnalogStandard::SECAM_B},
    {L"iq", L"Iraq (العراق)", 964, &AnalogStandard::SECAM_B},
    {L"ie", L"Ireland (Eire)", 353, &AnalogStandard::PAL_I},
    {L"il", L"Israel (ישראל)", 972, &AnalogStandard::PAL_B},
    {L"it", L"Italy (Italia)", 39, &AnalogStandard::PAL_B},
    {L"jm", L"Jamaica", 1, &AnalogStandard::NTSC},
    {L"jp", L"Japan (日本)", 81, &AnalogStandard::NTSC_JAPAN},
    {L"jo", L"Jordan (الأردن)", 962, &AnalogStandard::PAL_B},
    {L"kz", L"Kazakhstan (Қазақстан)", 7, &AnalogStandard::SECAM_D},
    {L"ke", L"Kenya", 254, &AnalogStandard::PAL_B},
    {L"ki", L"Kiribati Republic", 686, &AnalogStandard::PAL_B},
    {L"kr", L"Korea (North) (대한민국)", 850, &AnalogStandard::SECAM_D},
    {L"kp", L"Korea (South) (대한민국)", 82, &AnalogStandard::NTSC},
    {L"kw", L"Kuwait (الكويت)", 965, &AnalogStandard::PAL_B},
    {L"kg", L"Kyrgyzstan (Кыргызстан)", 7, &AnalogStandard::SECAM_D},
    {L"la", L"Laos", 856, &AnalogStandard::PAL_B},
    {L"lv", L"Latvia (Latvija)", 371, &AnalogStandard::SECAM_D},
    {L"lb", L"Lebanon (لبنان)", 961, &AnalogStandard::SECAM_B},
    {L"ls", L"Lesotho", 266, &AnalogStandard::PAL_I},
    {L"lr", L"Liberia", 231, &AnalogStandard::PAL_B},
    {L"ly", L"Libya (ليبيا)", 218, &AnalogStandard::SECAM_B},
    {L"li", L"Liechtenstein", 41, &AnalogStandard::PAL_B},
    {L"lt", L"Lithuania (Lietuva)", 370, &AnalogStandard::PAL_B},
    {L"lu", L"Luxembourg", 352, &AnalogStandard::PAL_B},
    {L"mo", L"Macao SAR (澳門特别行政區)", 853, &AnalogStandard::PAL_I},
    {L"mg", L"Madagascar", 261, &AnalogStandard::SECAM_K},
    {L"mw", L"Malawi", 265, &AnalogStandard::NTSC},
    {L"my", L"Malaysia", 60, &AnalogStandard::PAL_B},
    {L"mv", L"Maldives (ދިވެހި ރާއްޖެ)", 960, &AnalogStandard::PAL_B},
    {L"ml", L"Mali", 223, &AnalogStandard::SECAM_K},
    {L"mt", L"Malta", 356, &AnalogStandard::PAL_B},
    {L"mh", L"Marshall Islands", 692, &AnalogStandard::NTSC},
    {L"mq", L"Martinique", 596, &AnalogStandard::SECAM_K},
    {L"mr", L"Mauritania", 222, &AnalogStandard::SECAM_B},
    {L"mu", L"Mauritius", 230, &AnalogStandard::SECAM_B},
    {L"yt", L"Mayotte Island", 269, &AnalogStandard::SECAM_K},
    {L"mx", L"México", 52, &AnalogStandard::NTSC},
    {L"fm", L"Micronesia", 691, &AnalogStandard::NTSC},
    {L"md", L"Moldova", 373, &AnalogStandard::SECAM_D},
    {L"mc", L"Monaco", 377, &AnalogStandard::SECAM_G},
    {L"mn", L"Mongolia", 976, &AnalogStandard::SECAM_D},
    {L"ms", L"Montserrat", 1, &AnalogStandard::NTSC},
    {L"ma", L"Morocco (المملكة المغربية)", 212, &AnalogStandard::SECAM_B},
    {L"mz", L"Mozambique", 258, &AnalogStandard::PAL_B},
    {L"mm", L"Myanmar", 95, &AnalogStandard::NTSC},
    {L"na", L"Namibia", 264, &AnalogStandard::PAL_I},
    {L"nr", L"Nauru", 674, &AnalogStandard::NTSC},
    {L"np", L"Nepal (नेपाल)", 977, &AnalogStandard::PAL_B},
    {L"nl", L"Netherlands (Nederland)", 31, &AnalogStandard::PAL_B},
    {L"an", L"Netherlands Antilles", 599, &AnalogStandard::NTSC},
    {L"kn", L"Nevis", 1, &AnalogStandard::NTSC},
    {L"nc", L"New Caledonia", 687, &AnalogStandard::SECAM_K},
    {L"nz", L"New Zealand", 64, &AnalogStandard::PAL_B},
    {L"ni", L"Nicaragua", 505, &AnalogStandard::NTSC},
    {L"ne", L"Niger", 227, &AnalogStandard::SECAM_K},
    {L"ng", L"Nigeria", 234, &AnalogStandard::PAL_B},
    {L"nu", L"Niue", 683, &AnalogStandard::NTSC},
    {L"nf", L"Norfolk Island", 672, &AnalogStandard::PAL_B},
    {L"no", L"Norway (Norge)", 47, &AnalogStandard::PAL_B},
    {L"om", L"Oman (عمان)", 968, &AnalogStandard::PAL_B},
    {L"pk", L"Pakistan (پاکستان)", 92, &AnalogStandard::PAL_B},
    {L"pw", L"Palau", 680, &AnalogStandard::NTSC},
    {L"pa", L"Panamá", 507, &AnalogStandard::NTSC},
    {L"pg", L"Papua New Guinea", 675, &AnalogStandard::PAL_B},
    {L"py", L"Paraguay", 595, &AnalogStandard::PAL_N},
    {L"pe", L"Perú", 51, &AnalogStandard::NTSC},
    {L"ph", L"Philippines", 63, &AnalogStandard::NTSC},
    {L"pl", L"Poland (Polska)", 48, &AnalogStandard::PAL_B},
    {L"pt", L"Portugal", 351, &AnalogStandard::PAL_B},
    {L"pr", L"Puerto Rico", 1, &AnalogStandard::NTSC},
    {L"qa", L"Qatar (قطر)", 974, &AnalogStandard::PAL_B},
    {L"re", L"Reunion Island", 262, &AnalogStandard::SECAM_K},
    {L"ro", L"România", 40, &AnalogStandard::PAL_D},
    {L"ri", L"Rota Island", 670, &AnalogStandard::NTSC},
    {L"ru", L"Russia (Россия)", 7, &AnalogStandard::SECAM_D},
    {L"rw", L"Rwanda", 250, &AnalogStandard::PAL_B},
    {L"lc", L"Saint Lucia", 1, &AnalogStandard::NTSC},
    {L"sp", L"Saipan Island", 670, &AnalogStandard::NTSC},
    {L"ws", L"Samoa", 685, &AnalogStandard::PAL_B},
    {L"sm", L"San Marino", 378, &AnalogStandard::PAL_B},
    {L"st", L"Sao Tome and Principe", 239, &AnalogStandard::PAL_B},
    {L"sa", L"Saudi Arabia (المملكة العربية السعودية)", 966, &AnalogStandard::SECAM_B},
    {L"sn", L"Sénégal Republic", 221, &AnalogStandard::SECAM_K},
    {L"rs", L"Serbia and Montenegro", 381, &AnalogStandard::PAL_B},
    {L"sc", L"Seychelle Islands", 248, &AnalogStandard::PAL_B},
    {L"sl", L"Sierra Leone", 232, &AnalogStandard::PAL_B},
    {L"sg", L"Singapore (新加坡)", 65, &AnalogStandard::PAL_B},
    {L"sk", L"Slovak Republic (Slovenská republika)", 421, &AnalogStandard::PAL_B},
    {L"si", L"Slovenia (Slovenija)", 386, &AnalogStandard::PAL_B},
    {L"sb", L"Solomon Islands", 677, &AnalogStandard::NTSC},
    {L"so", L"Somalia", 252, &AnalogStandard::PAL_B},
    {L"za", L"South Africa (Suid Afrika)", 27, &AnalogStandard::PAL_I},
    {L"es", L"Spain (España)", 34, &AnalogStandard::PAL_B},
    {L"lk", L"Sri Lanka", 94, &AnalogStandard::PAL_B},
    {L"sh", L"St. Helena", 290, &AnalogStandard::NTSC},
    {L"ss", L"St. Kitts", 1, &AnalogStandard::NTSC},
    {L"pm", L"St. Pierre and Miquelon", 508, &AnalogStandard::SECAM_K},
    {L"vc", L"St. Vincent and the Grenadines", 1, &AnalogStandard::NTSC},
    {L"sd", L"Sudan", 249, &AnalogStandard::PAL_B},
    {L"sr", L"Suriname", 597, &AnalogStandard::NTSC},
    {L"sz", L"Swaziland", 268, &AnalogStandard::PAL_B},
    {L"se", L"Sweden (Lule)", 46, &AnalogStandard::PAL_B},
    {L"ch", L"Switzerland (Suisse)", 41, &AnalogStandard::PAL_B},
    {L"sy", L"Syria (سوريا)", 963, &AnalogStandard::SECAM_B},
    {L"tw", L"Taiwan (台灣)", 886, &AnalogStandard::NTSC},
    {L"tj", L"Tajikistan (Тоҷикистон)", 7, &AnalogStandard::SECAM_D},
    {L"tz", L"Tanzania", 255, &AnalogStandard::PAL_B},
    {L"as", L"Territory of American Samoa", 684, &AnalogStandard::NTSC},
    {L"th", L"Thailand (ไทย)", 66, &AnalogStandard::PAL_B},
    {L"ti", L"Tinian Island", 670, &AnalogStandard::NTSC},
    {L"tg", L"Togo", 228, &AnalogStandard::SECAM_K},
    {L"tk", L"Tokelau", 690, &AnalogStandard::NTSC},
    {L"to", L"Tonga", 676, &AnalogStandard::NTSC},
    {L"tt", L"Trinidad and Tobago (Trinidad y Tobago)", 1, &AnalogStandard::NTSC},
    {L"tn", L"Tunisia (تونس)", 216, &AnalogStandard::SECAM_B},
    {L"tr", L"Turkey (Türkiye)", 90, &AnalogStandard::PAL_B},
    {L"tm", L"Turkmenistan (Türkmenistan)", 7, &AnalogStandard::SECAM_D},
    {L"tc", L"Turks and Caicos Islands", 1, &AnalogStandard::NTSC},
    {L"tv", L"Tuvalu", 688, &AnalogStandard::NTSC},
    {L"ug", L"Uganda", 256, &AnalogStandard::PAL_B},
    {L"ua", L"Ukraine (Україна)", 380, &AnalogStandard::SECAM_D},
    {L"ae", L"United Arab Emirates", 971, &AnalogStandard::PAL_B},
    {L"gb", L"United Kingdom", 44, &AnalogStandard::PAL_I},
    {L"vi", L"United States Virgin Islands", 1, &AnalogStandard::NTSC},
    {L"uy", L"Uruguay", 598, &AnalogStandard::PAL_N},
    {L"uz", L"Uzbekistan (Ўзбекистон)", 7, &AnalogStandard::SECAM_D},
    {L"vu", L"Vanuatu", 678, &AnalogStandard::NTSC},
    {L"ve", L"Venezuela", 58, &AnalogStandard::NTSC},
    {L"va", L"Vatican City", 39, &AnalogStandard::PAL_B},
    {L"vn", L"Vietnam (Việt Nam)", 84, &AnalogStandard::NTSC},
    {L"wf", L"Wallis and Futuna Islands", 681, &AnalogStandard::SECAM_K},
    {L"ye", L"Yemen (اليمن)", 967, &AnalogStandard::PAL_B},
    {L"zm", L"Zambia", 260, &AnalogStandard::PAL_B},
    {L"zw", L"Zimbabwe", 263, &AnalogStandard::PAL_B},
};

} // namespace

CountryCodeManager::CountryCodeManager()
{
    for (const CountryRow &row : kCountryRows) {
        insert(row.name, row.key, row.code, row.standard(), row.language);
    }
}

CountryCodeManager::~CountryCodeManager()
{
    for (int i = 0; i < m_codes.size(); ++i)
        delete m_codes.valueAt(i);
}

const CountryCode *CountryCodeManager::countryCodeByString(const kel::String &key) const
{
    CountryCode *const *found = m_codes.lookup(key);
    return found ? *found : nullptr;
}

int CountryCodeManager::countryCodeCount() const
{
    return m_codes.size();
}

const CountryCode *CountryCodeManager::countryCodeAtIndex(int index) const
{
    return m_codes.valueAt(index);
}

void CountryCodeManager::insert(const kel::String &name, const kel::String &key, int code,
                                const AnalogStandard &standard, int language)
{
    std::unique_ptr<CountryCode> record(new CountryCode(name, key, code, standard, language));
    if (m_codes.insert(key, record.get()))
        record.release();
}

} // namespace sorvane
