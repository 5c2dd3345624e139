// This compiles the whole source of Boost.JSON, so that its library is not needed.
#include <boost/json/src.hpp>
