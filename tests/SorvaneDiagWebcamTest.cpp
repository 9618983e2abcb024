// `sorvane-diag webcam` and `demo` end to end against the lab's cameras: the images written
// decode, come out upright with true colours and in capture order, and the report says so.
#include "HostProgram.h"
#include "JsonValue.h"
#include "ScratchFolder.h"

#include <lab/FrameMark.h>

#include <atlbase.h>
#include <gtest/gtest.h>
#include <wincodec.h>

#include <cstdlib>

using sorvane::test::contains;
using sorvane::test::HostProgram;
using sorvane::test::JsonValue;
using sorvane::test::narrow;
using sorvane::test::ScratchFolder;
using sorvane::test::wide;

namespace {

// An image file decoded through WIC into top-down 24-bit BGR.
struct Picture {
    UINT width = 0;
    UINT height = 0;
    std::vector<BYTE> bgr;

    static Picture load(const std::wstring &path)
    {
        Picture picture;
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        {
            CComPtr<IWICImagingFactory> factory;
            CComPtr<IWICBitmapDecoder> decoder;
            CComPtr<IWICBitmapFrameDecode> frame;
            CComPtr<IWICFormatConverter> converted;
            if (SUCCEEDED(factory.CoCreateInstance(CLSID_WICImagingFactory)) &&
                SUCCEEDED(factory->CreateDecoderFromFilename(path.c_str(), nullptr, GENERIC_READ,
                                                             WICDecodeMetadataCacheOnDemand, &decoder)) &&
                SUCCEEDED(decoder->GetFrame(0, &frame)) && SUCCEEDED(factory->CreateFormatConverter(&converted)) &&
                SUCCEEDED(converted->Initialize(frame, GUID_WICPixelFormat24bppBGR, WICBitmapDitherTypeNone, nullptr,
                                                0.0, WICBitmapPaletteTypeCustom)) &&
                SUCCEEDED(converted->GetSize(&picture.width, &picture.height))) {
                picture.bgr.resize(static_cast<size_t>(picture.width) * picture.height * 3);
                if (FAILED(converted->CopyPixels(nullptr, picture.width * 3, static_cast<UINT>(picture.bgr.size()),
                                                 picture.bgr.data())))
                    picture.bgr.clear();
            }
        }
        CoUninitialize();
        return picture;
    }

    bool decoded() const { return !bgr.empty(); }
    const BYTE *at(int x, int y) const { return &bgr[(static_cast<size_t>(y) * width + x) * 3]; }
    int luma(int x, int y) const { return (at(x, y)[0] + at(x, y)[1] * 6 + at(x, y)[2] * 3) / 10; }

    // The frame number in the lab's mark band; -1 when the band is not where it belongs
    // (an upside-down picture has colour bars there).
    long frameNumber() const
    {
        const int y = lab::kMarkCell / 2;
        if (luma(lab::kMarkCell / 2, y) < 192 || luma(lab::kMarkCell * 3 / 2, y) > 64)
            return -1;
        long number = 0;
        for (int bit = 0; bit < lab::markBits(static_cast<int>(width)); ++bit) {
            const int x = (bit + lab::kMarkSyncCells) * lab::kMarkCell + lab::kMarkCell / 2;
            if (luma(x, y) > 128)
                number |= 1L << bit;
        }
        return number;
    }

    // Every colour bar, sampled across the middle of the picture, within `tolerance`.
    bool hasColourBars(int left, int top, int barsWidth, int barsHeight, int tolerance) const
    {
        for (int bar = 0; bar < 8; ++bar) {
            const int x = left + bar * barsWidth / 8 + barsWidth / 16;
            const lab::Rgb expected = lab::barColour(bar * barsWidth / 8 + barsWidth / 16, barsWidth);
            const BYTE *pixel = at(x, top + barsHeight / 2);
            if (std::abs(pixel[2] - expected.r) > tolerance || std::abs(pixel[1] - expected.g) > tolerance ||
                std::abs(pixel[0] - expected.b) > tolerance)
                return false;
        }
        return true;
    }
};

std::vector<std::string> filesOfKind(const JsonValue &report, const std::string &kind)
{
    std::vector<std::string> paths;
    for (size_t i = 0; i < report["files"].size(); ++i) {
        if (report["files"][i]["kind"].text() == kind)
            paths.push_back(report["files"][i]["path"].text());
    }
    return paths;
}

JsonValue runWebcam(const std::wstring &device, const ScratchFolder &folder, const std::wstring &frames,
                    HostProgram::Outcome &outcome)
{
    outcome = HostProgram::run({L"webcam", L"--device", device, L"--frames", frames, L"--out", folder.file(L"frames"),
                                L"--json", folder.file(L"report.json")});
    return JsonValue::parse(ScratchFolder::read(folder.file(L"report.json")));
}

} // namespace

TEST(SorvaneDiagWebcamTest, FramesAreSavedInCaptureOrderWithAContactSheet)
{
    ScratchFolder folder(L"sorvane-diag-webcam");
    HostProgram::Outcome outcome;
    const JsonValue report = runWebcam(L"Lab Webcam YUY2", folder, L"3", outcome);
    ASSERT_EQ(0u, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_EQ("PASS", report["result"].text());
    EXPECT_EQ("Lab Webcam YUY2", report["device"]["name"].text());
    EXPECT_TRUE(contains(outcome.out, "Got 3 frames of 640x480 YUY2.")) << outcome.out;
    EXPECT_TRUE(contains(outcome.out, "Saved 3 images and a contact sheet in")) << outcome.out;

    const std::vector<std::string> frames = filesOfKind(report, "frame");
    ASSERT_EQ(3u, frames.size());
    long first = -1;
    for (size_t i = 0; i < frames.size(); ++i) {
        EXPECT_TRUE(contains(frames[i], "frame-00" + std::to_string(i + 1) + ".png")) << frames[i];
        const Picture picture = Picture::load(wide(frames[i]));
        ASSERT_TRUE(picture.decoded()) << frames[i];
        EXPECT_EQ(640u, picture.width);
        EXPECT_EQ(480u, picture.height);
        EXPECT_TRUE(picture.hasColourBars(0, lab::kMarkCell, 640, 480 - lab::kMarkCell, 12)) << frames[i];
        if (i == 0) {
            first = picture.frameNumber();
        } else {
            EXPECT_EQ(first + static_cast<long>(i), picture.frameNumber()) << frames[i];
        }
    }
    EXPECT_GE(first, 0);

    const std::vector<std::string> sheets = filesOfKind(report, "contactSheet");
    ASSERT_EQ(1u, sheets.size());
    const Picture sheet = Picture::load(wide(sheets[0]));
    ASSERT_TRUE(sheet.decoded());
    // The first thumbnail, 320 pixels wide, shows the bars.
    EXPECT_TRUE(sheet.hasColourBars(8, 8 + 20, 320, 200, 24));
}

TEST(SorvaneDiagWebcamTest, EveryRawLayoutComesOutUprightInTrueColours)
{
    for (const wchar_t *device : {L"Lab Webcam RGB24", L"Lab Webcam RGB24 Top-Down", L"Lab Webcam UYVY"}) {
        ScratchFolder folder(L"sorvane-diag-webcam");
        HostProgram::Outcome outcome;
        const JsonValue report = runWebcam(device, folder, L"1", outcome);
        ASSERT_EQ(0u, outcome.exitCode) << outcome.out << outcome.err;
        const std::vector<std::string> frames = filesOfKind(report, "frame");
        ASSERT_EQ(1u, frames.size());
        const Picture picture = Picture::load(wide(frames[0]));
        ASSERT_TRUE(picture.decoded());
        EXPECT_GE(picture.frameNumber(), 0) << frames[0];
        EXPECT_TRUE(picture.hasColourBars(0, lab::kMarkCell, static_cast<int>(picture.width),
                                          static_cast<int>(picture.height) - lab::kMarkCell, 12))
            << frames[0];
    }
}

TEST(SorvaneDiagWebcamTest, TheReportKeepsProgressChangesTimingsAndFileSizes)
{
    ScratchFolder folder(L"sorvane-diag-webcam");
    HostProgram::Outcome outcome;
    const JsonValue report = runWebcam(L"Lab Webcam UYVY", folder, L"2", outcome);
    ASSERT_EQ(0u, outcome.exitCode);

    const JsonValue &progress = report["progress"];
    ASSERT_GT(progress.size(), 0u);
    for (size_t i = 1; i < progress.size(); ++i) {
        EXPECT_GE(progress[i]["atMs"].number(), progress[i - 1]["atMs"].number());
        if (progress[i].has("percent") && progress[i - 1].has("percent")) {
            EXPECT_NE(progress[i]["percent"].number(), progress[i - 1]["percent"].number());
        }
    }
    for (const char *timing : {"enumerationMs", "captureMs", "savingMs", "totalMs"})
        EXPECT_EQ(JsonValue::NUMBER, report["timings"][timing].type()) << timing;
    for (size_t i = 0; i < report["files"].size(); ++i) {
        const JsonValue &file = report["files"][i];
        EXPECT_EQ(static_cast<double>(ScratchFolder::read(wide(file["path"].text())).size()), file["bytes"].number());
    }
}

TEST(SorvaneDiagWebcamTest, TheLibrarysLogGoesToTheFileAtTheLevelAsked)
{
    ScratchFolder folder(L"sorvane-diag-webcam");
    const std::wstring detail = folder.file(L"detail.log");
    const std::wstring errors = folder.file(L"errors.log");
    EXPECT_EQ(0u, HostProgram::run(
                      {L"webcam", L"-d", L"Lab Webcam UYVY", L"-n", L"1", L"-o", folder.file(L"a"), L"--log", detail})
                      .exitCode);
    EXPECT_EQ(0u, HostProgram::run({L"webcam", L"-d", L"Lab Webcam UYVY", L"-n", L"1", L"-o", folder.file(L"b"),
                                    L"--log", errors, L"--log-level", L"error"})
                      .exitCode);
    const std::string detailed = ScratchFolder::read(detail);
    EXPECT_TRUE(contains(detailed, "DETAIL libSorvane.Capture: ")) << detailed.substr(0, 400);
    EXPECT_TRUE(contains(detailed, "SetFormat to "));
    EXPECT_TRUE(ScratchFolder::read(errors).empty());
}

TEST(SorvaneDiagWebcamTest, TheDemoListsTheDevicesThenSavesFramesFromTheFirstWebcam)
{
    ScratchFolder folder(L"sorvane-diag-demo");
    const HostProgram::Outcome outcome = HostProgram::run(
        {L"demo", L"--frames", L"2", L"--out", folder.file(L"frames"), L"--json", folder.file(L"report.json")});
    ASSERT_EQ(0u, outcome.exitCode) << outcome.out << outcome.err;
    EXPECT_TRUE(contains(outcome.out, " capture devices:"));
    EXPECT_TRUE(contains(outcome.out, "Saved 2 images and a contact sheet in " + narrow(folder.file(L"frames"))))
        << outcome.out;

    const JsonValue report = JsonValue::parse(ScratchFolder::read(folder.file(L"report.json")));
    EXPECT_GT(report["devices"].size(), 1u);
    EXPECT_TRUE(contains(report["device"]["capabilities"][1].text(), "Webcam"));
    EXPECT_EQ(2u, filesOfKind(report, "frame").size());
    EXPECT_TRUE(Picture::load(wide(filesOfKind(report, "contactSheet").at(0))).decoded());
}
