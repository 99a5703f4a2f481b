#pragma once

#include "platform/Services.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace tarnwick {

// Names that hold a "\" are left out of a listing, and a folder that is one of the folders above it in its own path
// (links in a circle) lists as an empty one, so that every walk ends.
class PosixFiles final : public FileService {
public:
    std::string OpenListing(const std::string& pattern, ListingHandle& listing) override;
    std::string StepListing(ListingHandle listing) override;
    void CloseListing(ListingHandle listing) override;

    // A link to a file is deleted itself, its target stays.
    bool Remove(const std::string& path) override;

    std::string FavoritesFolder() override;

private:
    struct Listing {
        std::vector<std::string> Names;
        std::size_t Next = 0;
    };

    ListingHandle FreeHandle();

    std::unordered_map<ListingHandle, Listing> listings_;
    ListingHandle lastHandle_ = 0;
};

} // namespace tarnwick
