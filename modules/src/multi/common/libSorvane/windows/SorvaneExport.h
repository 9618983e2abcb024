#pragma once

#if !defined(_WIN32)
// The portable transport-stream pieces also build natively (the fuzzers), without a DLL.
#define SORVANE_API
#elif defined(SORVANE_BUILD)
#define SORVANE_API __declspec(dllexport)
#else
#define SORVANE_API __declspec(dllimport)
#endif
