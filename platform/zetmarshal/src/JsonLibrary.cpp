// Boost.JSON without its library: its whole source, compiled here once.
#include <boost/json/src.hpp>
