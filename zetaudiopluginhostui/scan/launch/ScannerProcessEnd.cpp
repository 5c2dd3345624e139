#include "scan/launch/ScannerProcessEnd.h"

#include <zetaudiopluginhost/ReasonSentences.h>

namespace zetaudiopluginhostui {

namespace reasons = zetaudiopluginhost::reasons;

std::string ScannerProcessEnd::Tell(const Sentences& sentences, const std::string& subject) const
{
    const std::string text =
        how == How::Unknown ? reasons::InEnglish(sentences.unknown, {subject})
                            : reasons::InEnglish(how == How::Exited ? sentences.exited : sentences.wasEnded,
                                                 {number, subject});
    return lastOutput.empty() ? text : reasons::InEnglish(reasons::lastOutput, {text, lastOutput});
}

} // namespace zetaudiopluginhostui
