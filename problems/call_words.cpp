// SPDX-License-Identifier: Apache-2.0
#include "problems/call_words.h"

#include "problems/near_word.h"
#include "problems/refusal_reason.h"
#include "problems/stand_in_arrays.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <stdexcept>

namespace {

[[noreturn]] void reject(const std::string& why) { throw std::invalid_argument(why); }

// The pieces between separators, empty ones included.
std::vector<std::string> pieces(const std::string& text, char separator) {
    std::vector<std::string> result;
    for (size_t at = 0; at <= text.size();) {
        const size_t end = std::min(text.find(separator, at), text.size());
        result.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return result;
}

template <class Number>
Number number(const std::string& text) {
    Number value = 0;
    const auto end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error == std::errc::result_out_of_range)
        reject("'" + text + "' doesn't fit into " + std::to_string(8 * sizeof(Number)) + " bits");
    if (error != std::errc() || stop != end) reject("'" + text + "' is no number");
    return value;
}

uint32_t r2r_kind(const std::string& text) {
    for (uint32_t kind = r2r_r2hc; kind <= r2r_rodft11; ++kind)
        if (text == r2r_kind_name(kind)) return kind;
    return number<uint32_t>(text);
}

template <class Read>
auto list(const std::string& text, Read read) {
    std::vector<decltype(read(text))> result;
    for (const std::string& piece : pieces(text, ',')) result.push_back(read(piece));
    return result;
}

fft_iodim64 triple(const std::string& text) {
    const auto parts = pieces(text, ':');
    if (parts.size() != 3) reject("'" + text + "' is no triple size:istride:ostride");
    return {number<int64_t>(parts[0]), number<int64_t>(parts[1]), number<int64_t>(parts[2])};
}

int narrowed(int64_t value) {
    if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max())
        reject("'" + std::to_string(value) +
               "' doesn't fit into the 32 bits of the call; the word 'wide' is for the other");
    return static_cast<int>(value);
}

std::vector<fft_iodim> narrowed(const std::vector<fft_iodim64>& dims) {
    std::vector<fft_iodim> result;
    result.reserve(dims.capacity());
    for (const auto& d : dims) result.push_back({narrowed(d.n), narrowed(d.is), narrowed(d.os)});
    return result;
}

// A list that was given has memory, even if it is a list of none.
template <class T>
const T* pointer(const std::vector<T>& list) {
    return list.capacity() == 0 ? nullptr : list.data();
}

uint32_t kind_named(const std::string& name) {
    if (name == "c2c") return kind_c2c;
    if (name == "r2c") return kind_r2c;
    if (name == "c2r") return kind_c2r;
    if (name == "r2r") return kind_r2r;
    constexpr std::string_view names[] = {"c2c", "r2c", "c2r", "r2r"};
    reject("'" + name + "' is no kind: c2c, r2c, c2r or r2r" + problems::did_you_mean(name, names));
}

// A list that the call reads by its rank.
void check_length(const char* name, size_t length, size_t rank) {
    if (length == 0 || length == rank) return;
    reject(std::string(name) + " has " + std::to_string(length) + " entries for " + std::to_string(rank) + " sizes");
}

constexpr std::string_view many_words[] = {
    "n=", "howmany=", "istride=", "idist=", "ostride=", "odist=", "inembed=", "onembed=", "sign=", "kinds=", "inplace"};
constexpr std::string_view guru_words[] = {"dims=", "batch=", "sign=", "kinds=", "split", "wide", "inplace"};

}  // namespace

bool call_words::are_in(const std::string& text) {
    const std::string first = text.substr(0, text.find(' '));
    return first == "many" || first == "guru";
}

call_words::call_words(const std::string& text) {
    std::vector<std::string> words;
    for (const std::string& piece : pieces(text, ' '))
        if (!piece.empty()) words.push_back(piece);
    if (words.size() < 2) reject("a call and a kind are wanted, as in 'many c2c n=1024'");
    is_guru_ = words[0] == "guru";
    many_.kind = kind_named(words[1]);
    many_.sign = -1;
    many_.howmany = many_.istride = many_.ostride = 1;
    for (size_t i = 2; i < words.size(); ++i) take(words[i]);
    check_words();
    set_arguments();
}

void call_words::take(const std::string& word) {
    const size_t equals = word.find('=');
    if (equals == word.npos) return take_flag(word);
    const std::string key = word.substr(0, equals), value = word.substr(equals + 1);
    const std::string_view known =
        is_guru_ ? "dims batch sign kinds" : "n howmany istride idist ostride odist inembed onembed sign kinds";
    const auto names = pieces(std::string(known), ' ');
    if (std::find(names.begin(), names.end(), key) == names.end())
        reject(
            "'" + word + "' is no word of this call" +
            (is_guru_ ? problems::did_you_mean(key + "=", guru_words) : problems::did_you_mean(key + "=", many_words)));
    for (const char* list_name : {"n", "inembed", "onembed", "kinds", "dims", "batch"})
        if (key == list_name) return take_list(key, value);
    take_number(key, value);
}

void call_words::take_flag(const std::string& word) {
    if (word == "inplace")
        in_place_ = true;
    else if (word == "split" && is_guru_)
        split_ = split_arrays;
    else if (word == "wide" && is_guru_)
        wide_ = true;
    else
        reject("'" + word + "' is no word of this call" +
               (is_guru_ ? problems::did_you_mean(word, guru_words) : problems::did_you_mean(word, many_words)));
}

void call_words::take_list(const std::string& key, const std::string& value) {
    if (value.empty() && key == "dims") return dims_.reserve(1);
    if (value.empty() && key == "batch") return batch_.reserve(1);
    if (value.empty() && key == "kinds") return kinds_.reserve(1);
    if (key == "n") n_ = list(value, number<int>);
    if (key == "inembed") inembed_ = list(value, number<int>);
    if (key == "onembed") onembed_ = list(value, number<int>);
    if (key == "kinds") kinds_ = list(value, r2r_kind);
    if (key == "dims") dims_ = list(value, triple);
    if (key == "batch") batch_ = list(value, triple);
}

void call_words::take_number(const std::string& key, const std::string& value) {
    const struct {
        const char* key;
        int many_arguments::* field;
    } fields[] = {{"howmany", &many_arguments::howmany}, {"istride", &many_arguments::istride},
                  {"idist", &many_arguments::idist},     {"ostride", &many_arguments::ostride},
                  {"odist", &many_arguments::odist},     {"sign", &many_arguments::sign}};
    for (const auto& f : fields)
        if (key == f.key) many_.*f.field = number<int>(value);
    sign_given_ |= key == "sign";
}

// What the words say that the call can't be told.
void call_words::check_words() const {
    const size_t rank = is_guru_ ? dims_.size() : n_.size();
    check_length("inembed", inembed_.size(), rank);
    check_length("onembed", onembed_.size(), rank);
    check_length("kinds", kinds_.size(), rank);
    if (many_.kind != kind_r2r && !kinds_.empty()) reject("'kinds' is for r2r alone");
    if (many_.kind != kind_c2c && sign_given_) reject("'sign' is for c2c alone");
    if (split_ != split_arrays) return;
    if (many_.kind == kind_r2r) reject("there is no split call of real-to-real transforms");
    if (sign_given_ && many_.sign != sign_forward && many_.sign != sign_backward)
        reject("the split call has no sign; -1 and 1 stand for parts as they are and exchanged");
}

void call_words::set_arguments() {
    const auto sign_of = [&](uint32_t kind) {
        return kind == kind_r2c ? sign_forward : kind == kind_c2r ? sign_backward : 0;
    };
    if (many_.kind != kind_c2c) many_.sign = static_cast<int>(sign_of(many_.kind));
    many_.n = pointer(n_);
    many_.rank = static_cast<int>(n_.size());
    many_.inembed = pointer(inembed_);
    many_.onembed = pointer(onembed_);
    many_.r2r_kinds = pointer(kinds_);
    if (!wide_) narrow_dims_ = narrowed(dims_);
    if (!wide_) narrow_batch_ = narrowed(batch_);

    many_.in = stand_in_array(stand_in::in);
    many_.out = stand_in_array(in_place_ ? stand_in::in : stand_in::out);
    if (is_split(kind_r2c)) in_imag_ = stand_in_array(stand_in::in_imag);
    if (is_split(kind_c2r)) out_imag_ = stand_in_array(in_place_ && in_imag_ ? stand_in::in_imag : stand_in::out_imag);
    if (split_ == split_arrays && many_.kind == kind_c2c && many_.sign == sign_backward) {
        std::swap(many_.in, in_imag_);
        std::swap(many_.out, out_imag_);
        many_.sign = sign_forward;
    }
}

guru_arguments call_words::guru() const {
    const auto list = [&](const auto& wide, const auto& narrow) {
        return wide_ ? dim_list(pointer(wide)) : dim_list(pointer(narrow));
    };
    return {wide_ ? width::wide : width::narrow,
            many_.kind,
            many_.sign,
            split_,
            0,
            static_cast<int>(dims_.size()),
            list(dims_, narrow_dims_),
            static_cast<int>(batch_.size()),
            list(batch_, narrow_batch_),
            many_.in,
            in_imag_,
            many_.out,
            out_imag_,
            pointer(kinds_)};
}

std::string call_words::reason() const { return is_guru_ ? guru_reason(guru()) : many_reason(many_); }

fft_plan* call_words::record() const { return is_guru_ ? guru_record(guru()) : many_record(many_); }
