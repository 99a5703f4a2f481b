#pragma once

#include "services/Services.h"

#include <string>
#include <vector>

namespace tarnwick {

// Paths may be longer than 260 characters. Names that the system's code page can't spell come with another character in
// place of what is missing, which no action can reach.
class Win32Files : public FileService {
public:
    bool List(const std::string& folder, std::string_view ending, std::vector<ListedName>& names) override;
    std::string FolderIdentity(const std::string& folder) override;
    std::string RealFolder(const std::string& folder) override;
    FilePlace PlaceOf(const std::string& file) override;
    bool Read(const std::string& file, std::size_t limit, std::string& bytes) override;
    bool Remove(const std::string& path) override;
    std::string FavoritesFolder() override;
};

} // namespace tarnwick
