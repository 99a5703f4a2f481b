// The fakes keep the contracts of the services that they replace.

#include "contract_files.h"
#include "platform/headless/Fakes.h"

namespace tarnwick::test {
namespace {

class FilesInMemory : public FilesMachine {
public:
    FilesInMemory() { favorites_.AddFolder("x"); }
    FileService& Files() override { return favorites_; }
    std::string Path(const std::string& name) override { return favorites_.Full(name); }
    void MakeFile(const std::string& name, const std::string& bytes) override { favorites_.AddFile(name, bytes); }
    void MakeFolder(const std::string& name) override { favorites_.AddFolder(name); }
    void MakeReadOnly(const std::string& name) override { favorites_.ReadOnly.insert(Path(name)); }
    bool Link(const std::string& name, const std::string& target, bool) override {
        favorites_.AddLink(name, Path(target));
        return true;
    }

private:
    MemoryFavorites favorites_;
};

INSTANTIATE_TEST_SUITE_P(Fake, FilesContract,
                         testing::Values(FilesPlatform{
                             []() -> std::unique_ptr<FilesMachine> { return std::make_unique<FilesInMemory>(); },
                             true}));

} // namespace
} // namespace tarnwick::test
