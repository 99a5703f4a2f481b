#pragma once

#include "platform/Services.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace tarnwick {

// A folder that is one of the folders above it in its own path (junctions or links in a circle) lists as an empty one,
// so that every walk ends. Names that the system's code page can't spell come with "?" in them, which no action can
// reach.
class Win32Files : public FileService {
public:
    std::string OpenListing(const std::string& pattern, ListingHandle& listing) override;
    std::string StepListing(ListingHandle listing) override;
    void CloseListing(ListingHandle listing) override { listings_.erase(listing); }

    bool Remove(const std::string& path) override;
    std::string FavoritesFolder() override;

private:
    struct Listing {
        std::vector<std::string> Names;
        std::size_t Next = 0;
    };

    std::unordered_map<ListingHandle, Listing> listings_;
    ListingHandle lastHandle_ = 0;
};

} // namespace tarnwick
