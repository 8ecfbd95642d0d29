// SPDX-License-Identifier: Apache-2.0
// A planning call in words, with any numbers at all, so that refusals can be explained:
//   many KIND n=4,5 [howmany=3 istride=1 idist=20 ostride=1 odist=20 inembed=4,5 onembed=4,5 sign=-1 kinds=5,5 inplace]
//   guru KIND dims=4:1:1,5:4:4 [batch=3:20:20 sign=-1 kinds=redft10,dht split wide inplace]
// KIND is c2c, r2c, c2r or r2r; a list that isn't given is a null pointer, dims=, batch= and kinds= alone are lists of
// none; `wide` means the 64-bit call. The split complex call has no sign: for sign=1 real and imaginary parts are
// exchanged on both sides, as its callers do.
#pragma once
#include "interface/guru_arguments.h"
#include "interface/many_arguments.h"

#include <string>
#include <vector>

class call_words {
public:
    // True when the text names a call; else it may be a problem of the problem language.
    static bool are_in(const std::string& text);

    // Throws std::invalid_argument, which names the word it stumbled over: words that no call of that name can be told
    // in, such as lists that are too short, numbers that don't fit the call's, or arguments that the call doesn't have.
    explicit call_words(const std::string& text);

    // The first documented demand that the call fails, with the numbers of the call; empty when it passes.
    std::string reason() const;

    // The unplanned record of the call, or null.
    fft_plan* record() const;

private:
    void take(const std::string& word);
    void take_flag(const std::string& word);
    void take_list(const std::string& key, const std::string& value);
    void take_number(const std::string& key, const std::string& value);
    void check_words() const;
    void set_arguments();
    guru_arguments guru() const;
    bool is_split(uint32_t real_kind) const { return split_ == split_arrays && many_.kind != real_kind; }

    bool is_guru_ = false, wide_ = false, in_place_ = false, sign_given_ = false;
    many_arguments many_ = {};
    int64_t split_ = interleaved_arrays;
    float *in_imag_ = nullptr, *out_imag_ = nullptr;
    std::vector<int> n_, inembed_, onembed_;
    std::vector<uint32_t> kinds_;
    std::vector<fft_iodim64> dims_, batch_;
    std::vector<fft_iodim> narrow_dims_, narrow_batch_;
};
