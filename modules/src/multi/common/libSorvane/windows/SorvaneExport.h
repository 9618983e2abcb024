#pragma once

// Outside Windows (a native build of the portable parts, such as the ID parser and the
// transport-stream pieces the fuzzers use) nothing is exported or imported.
#if !defined(_WIN32)
#define SORVANE_API
#elif defined(SORVANE_BUILD)
#define SORVANE_API __declspec(dllexport)
#else
#define SORVANE_API __declspec(dllimport)
#endif
