// Reading JSON that may hold anything. Plain functions, any thread; what is absent or of another type is
// empty or null.
#pragma once

#include <boost/json/object.hpp>
#include <boost/json/value.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace platform {

std::optional<boost::json::object> parseObject(std::string_view text);

const boost::json::object* objectIn(const boost::json::object& parent, std::string_view key);
const boost::json::array* arrayIn(const boost::json::object& parent, std::string_view key);
std::string textIn(const boost::json::object& parent, std::string_view key);

} // namespace platform
