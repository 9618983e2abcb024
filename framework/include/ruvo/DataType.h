#pragma once

namespace ruvo {

struct DataType {
    enum Type { NONE, UINT32, BOOLEAN, DOUBLE, STRING };
};

} // namespace ruvo
