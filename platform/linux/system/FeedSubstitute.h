#pragma once

#include <string>

namespace platform {

// From now on the resource at this URL answers for every http or https URL asked of loadResource. An empty
// URL ends that.
void setFeedSubstitute(const std::string& url);
const std::string& feedSubstitute();

}  // namespace platform
