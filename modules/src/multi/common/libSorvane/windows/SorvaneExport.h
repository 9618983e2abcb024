#pragma once

#ifdef SORVANE_BUILD
#define SORVANE_API __declspec(dllexport)
#else
#define SORVANE_API __declspec(dllimport)
#endif
