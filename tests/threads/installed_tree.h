// SPDX-License-Identifier: Apache-2.0
// A folder laid out as the libraries are installed: ours four levels below the root, libtarn.so at its relative path.
#pragma once
#include <gtest/gtest.h>

#include <unistd.h>
#include <filesystem>
#include <string>

class installed_tree {
public:
    // A copy of `ours` and, unless empty, of `tarn`.
    explicit installed_tree(const std::filesystem::path& ours, const std::filesystem::path& tarn = {})
        : root_(testing::TempDir() + "installed_" + std::to_string(getpid())) {
        std::filesystem::remove_all(root_);
        std::filesystem::create_directories(our_folder());
        std::filesystem::copy_file(ours, our_folder() / ours.filename());
        ours_ = our_folder() / ours.filename();
        if (tarn.empty()) return;
        const std::filesystem::path tarn_folder = root_ / "tarn/gcc/release/lib";
        std::filesystem::create_directories(tarn_folder);
        std::filesystem::copy_file(tarn, tarn_folder / "libtarn.so");
    }
    ~installed_tree() { std::filesystem::remove_all(root_); }

    std::string ours() const { return ours_.string(); }

    // The same file under a name of exactly this length, by more slashes in front of it.
    std::string ours_by_a_name_of(size_t length) const {
        const std::string folder = our_folder().string();
        return folder + std::string(length - folder.size() - ours_.filename().string().size(), '/') +
               ours_.filename().string();
    }

private:
    std::filesystem::path our_folder() const { return root_ / "qfftf/gcc/release/lib"; }

    std::filesystem::path root_, ours_;
};
