#include "OneProcessor.h"

namespace zetaudiofilterscan {

struct OneProcessor::Before
{};

OneProcessor::OneProcessor() = default;

OneProcessor::~OneProcessor() = default;

} // namespace zetaudiofilterscan
