#include "json_text.h"

namespace dialwright::tools {

std::string JsonText(const Json& json) { return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n"; }

}  // namespace dialwright::tools
