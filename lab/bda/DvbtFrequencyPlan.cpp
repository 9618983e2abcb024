#include "bda/DvbtFrequencyPlan.h"

namespace lab {

namespace {

// Channels first..last with centres from firstKhz on, stepKhz apart (the channel bandwidth).
struct Raster {
    unsigned long first;
    unsigned long last;
    unsigned long firstKhz;
    unsigned long stepKhz;
};

const Raster kEuropeUhf = {21, 69, 474000, 8000};
const Raster kEuropeVhf = {5, 12, 177500, 7000};
const Raster kAustraliaVhf = {6, 12, 177500, 7000};
const Raster kAustraliaUhf = {28, 69, 529500, 7000};
const Raster kNewZealandUhf = {25, 69, 506000, 8000};

struct Country {
    unsigned long code;
    std::vector<Raster> rasters;
};

const std::vector<Country> &countries()
{
    static const std::vector<Country> table = {
        {30, {kEuropeUhf}},             // Greece
        {31, {kEuropeUhf}},             // Netherlands
        {32, {kEuropeUhf}},             // Belgium
        {33, {kEuropeUhf}},             // France
        {34, {kEuropeUhf}},             // Spain
        {36, {kEuropeUhf}},             // Hungary
        {39, {kEuropeUhf}},             // Italy
        {41, {kEuropeVhf, kEuropeUhf}}, // Switzerland
        {43, {kEuropeVhf, kEuropeUhf}}, // Austria
        {44, {kEuropeUhf}},             // United Kingdom
        {45, {kEuropeUhf}},             // Denmark
        {46, {kEuropeVhf, kEuropeUhf}}, // Sweden
        {47, {kEuropeUhf}},             // Norway
        {48, {kEuropeUhf}},             // Poland
        {49, {kEuropeVhf, kEuropeUhf}}, // Germany
        {61, {kAustraliaVhf, kAustraliaUhf}},
        {64, {kNewZealandUhf}},
        {351, {kEuropeUhf}}, // Portugal
        {353, {kEuropeUhf}}, // Ireland
        {358, {kEuropeUhf}}, // Finland
        {420, {kEuropeUhf}}, // Czech Republic
    };
    return table;
}

} // namespace

std::vector<unsigned long> DvbtFrequencyPlan::countryCodes()
{
    std::vector<unsigned long> codes;
    for (const Country &country : countries())
        codes.push_back(country.code);
    return codes;
}

bool DvbtFrequencyPlan::frequencies(unsigned long countryCode, std::vector<unsigned long> &kilohertz)
{
    kilohertz.clear();
    for (const Country &country : countries()) {
        if (country.code != countryCode)
            continue;
        for (const Raster &raster : country.rasters) {
            for (unsigned long channel = raster.first; channel <= raster.last; ++channel)
                kilohertz.push_back(raster.firstKhz + (channel - raster.first) * raster.stepKhz);
        }
        return true;
    }
    return false;
}

} // namespace lab
