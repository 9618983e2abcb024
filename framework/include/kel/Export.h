#pragma once

#ifdef KELCORE_BUILD
#define KEL_API __declspec(dllexport)
#else
#define KEL_API __declspec(dllimport)
#endif
