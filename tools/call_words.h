// SPDX-License-Identifier: Apache-2.0
// A planning call in words, with any numbers at all, so that refusals can be explained:
//   many KIND n=4,5 [howmany=3 istride=1 idist=20 ostride=1 odist=20 inembed=4,5 onembed=4,5 sign=-1 kinds=5 inplace]
//   guru KIND dims=4:1:1,5:4:4 [batch=3:20:20 sign=-1 kinds=5 split wide inplace]
// KIND is c2c, r2c, c2r or r2r; a list that isn't given is a null pointer; `wide` means the 64-bit call.
#pragma once
#include "interface/guru_arguments.h"
#include "interface/many_arguments.h"

#include <string>
#include <vector>

class call_words {
public:
    // True when the text names a call; else it may be a problem of the problem language.
    static bool are_in(const std::string& text);

    // Throws std::invalid_argument, which names the word it stumbled over.
    explicit call_words(const std::string& text);

    // The first documented demand that the call fails, or null.
    const char* refusal() const;

    // The unplanned record of the call, or null.
    fft_plan* record() const;

private:
    void take(const std::string& word);
    void take_flag(const std::string& word);
    void take_list(const std::string& key, const std::string& value);
    void take_number(const std::string& key, int value);
    guru_arguments guru() const;

    bool is_guru_ = false, wide_ = false;
    many_arguments many_ = {};
    int64_t split_ = interleaved_arrays;
    std::vector<int> n_, inembed_, onembed_;
    std::vector<uint32_t> kinds_;
    std::vector<fft_iodim64> dims_, batch_;
    mutable std::vector<fft_iodim> narrow_dims_, narrow_batch_;
    float in_[2], in_imag_[2], out_[2], out_imag_[2];  // planning by rules looks at the addresses alone
};
