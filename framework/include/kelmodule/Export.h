#pragma once

#ifdef KELMODULE_BUILD
#define KELMODULE_API __declspec(dllexport)
#else
#define KELMODULE_API __declspec(dllimport)
#endif
