#include "command/system_message.h"

namespace command {

std::string SystemMessage(const std::error_code& fault) {
    return fault.message();
}

}  // namespace command
