#pragma once

namespace kel {

// Higher is more severe. A message is written when its priority reaches both the
// factory-wide threshold and its logger's own.
enum LogPriority { LOG_DETAIL = 1, LOG_INFO = 2, LOG_WARNING = 3, LOG_ERROR = 4, LOG_OFF = 5 };

} // namespace kel
