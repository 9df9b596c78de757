#include "platform/linux/system/FeedSubstitute.h"

namespace platform {

namespace {

std::string substitute;

}  // namespace

void setFeedSubstitute(const std::string& url) { substitute = url; }

const std::string& feedSubstitute() { return substitute; }

}  // namespace platform
