// Identifiers of the video window's resources, shared by their script and CaptureBase.
#pragma once

#define IDI_CAPTURE_WINDOW 100
