#include "OneProcessor.h"

#include <sched.h>

namespace zetaudiofilterscan {

struct OneProcessor::Before
{
    cpu_set_t processors;
};

OneProcessor::OneProcessor()
{
    auto found = std::make_unique<Before>();
    const int current = ::sched_getcpu();
    if (current < 0 || current >= CPU_SETSIZE ||
        ::sched_getaffinity(0, sizeof found->processors, &found->processors) != 0)
        return;
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(current, &one);
    if (::sched_setaffinity(0, sizeof one, &one) == 0)
        before = std::move(found);
}

OneProcessor::~OneProcessor()
{
    if (before)
        ::sched_setaffinity(0, sizeof before->processors, &before->processors);
}

} // namespace zetaudiofilterscan
