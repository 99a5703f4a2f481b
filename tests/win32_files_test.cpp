#include "contract_files.h"

namespace tarnwick::test {

TEST(Win32FilesTest, NamesAFolderForTheFavorites) {
    const std::string folder = Win32Files().FavoritesFolder();
    EXPECT_TRUE(std::filesystem::is_directory(WideOf(folder))) << folder;
}

} // namespace tarnwick::test
