#pragma once

#include <ctime>
#include <optional>
#include <string>

#include "service/EventRequest.h"

// An answer of an event service as it is kept. Texts but the document are one line each.
struct KeptAnswer {
    std::string service;   // the address that answered
    std::string url;       // the request
    std::time_t time = 0;  // when
    Validators validators{};
    std::string document;  // QuakeML 1.0.1
};

// A private folder with a few kept answers, a file for each question. A file that is damaged, a link or from
// another version of the program is ignored. Without such a folder nothing is found or kept.
class AnswerCache {
  public:
    explicit AnswerCache(std::string folder) : mFolder(std::move(folder)) {}

    // $XDG_CACHE_HOME/tellmar, or ~/.cache/tellmar.
    static std::string userFolder();

    const std::string& folder() const { return mFolder; }

    std::optional<KeptAnswer> find(const std::string& url) const;
    // The latest answer of a service to any question.
    std::optional<KeptAnswer> newest(const std::string& service) const;
    // Replaces the answer to that question, and removes the oldest files beyond a few. Answers of more than a
    // few megabytes are not kept. Returns false when the answer is not stored.
    bool store(const KeptAnswer& answer) const;

  private:
    std::string pathFor(const std::string& url) const;
    void removeOldest() const;

    std::string mFolder;
};
