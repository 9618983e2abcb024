#pragma once

#ifdef RUVO_BUILD
#define RUVO_API __declspec(dllexport)
#else
#define RUVO_API __declspec(dllimport)
#endif
