// Boost.JSON itself, compiled once.
#include <boost/json/src.hpp>
