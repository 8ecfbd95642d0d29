// SPDX-License-Identifier: Apache-2.0
#include "tools/call_words.h"

#include <charconv>
#include <sstream>
#include <stdexcept>

namespace {

std::vector<std::string> pieces(const std::string& text, char separator) {
    std::vector<std::string> result;
    std::istringstream stream(text);
    for (std::string piece; std::getline(stream, piece, separator);)
        if (!piece.empty()) result.push_back(piece);
    return result;
}

template <class Number>
Number number(const std::string& text) {
    Number value = 0;
    const auto end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end) throw std::invalid_argument("'" + text + "' is no number that fits");
    return value;
}

template <class Number>
std::vector<Number> numbers(const std::string& text) {
    std::vector<Number> result;
    for (const std::string& piece : pieces(text, ',')) result.push_back(number<Number>(piece));
    return result;
}

std::vector<fft_iodim64> triples(const std::string& text) {
    std::vector<fft_iodim64> result;
    for (const std::string& piece : pieces(text, ',')) {
        const auto parts = pieces(piece, ':');
        if (parts.size() != 3) throw std::invalid_argument("'" + piece + "' is no triple size:istride:ostride");
        result.push_back({number<int64_t>(parts[0]), number<int64_t>(parts[1]), number<int64_t>(parts[2])});
    }
    return result;
}

std::vector<fft_iodim> narrowed(const std::vector<fft_iodim64>& dims) {
    std::vector<fft_iodim> result;
    result.reserve(dims.size());
    for (const auto& d : dims) result.push_back({int(d.n), int(d.is), int(d.os)});
    return result;
}

template <class T>
const T* pointer(const std::vector<T>& list) {
    return list.empty() ? nullptr : list.data();
}

uint32_t kind_named(const std::string& name) {
    if (name == "c2c") return kind_c2c;
    if (name == "r2c") return kind_r2c;
    if (name == "c2r") return kind_c2r;
    if (name == "r2r") return kind_r2r;
    throw std::invalid_argument("'" + name + "' is no kind: c2c, r2c, c2r or r2r");
}

int64_t sign_of(uint32_t kind, int given) {
    return kind == kind_c2c ? given : kind == kind_r2c ? sign_forward : kind == kind_c2r ? sign_backward : 0;
}

}  // namespace

bool call_words::are_in(const std::string& text) { return text.starts_with("many ") || text.starts_with("guru "); }

call_words::call_words(const std::string& text) {
    const auto words = pieces(text, ' ');
    if (words.size() < 2) throw std::invalid_argument("a call and a kind are wanted");
    is_guru_ = words[0] == "guru";
    many_.kind = kind_named(words[1]);
    many_.sign = -1;
    many_.howmany = many_.istride = many_.ostride = 1;
    many_.in = in_;
    many_.out = out_;
    for (size_t i = 2; i < words.size(); ++i) take(words[i]);
    many_.sign = static_cast<int>(sign_of(many_.kind, many_.sign));
    many_.n = pointer(n_);
    many_.rank = static_cast<int>(n_.size());
    many_.inembed = pointer(inembed_);
    many_.onembed = pointer(onembed_);
    many_.r2r_kinds = pointer(kinds_);
}

void call_words::take(const std::string& word) {
    const size_t equals = word.find('=');
    if (equals == word.npos) return take_flag(word);
    const std::string key = word.substr(0, equals), value = word.substr(equals + 1);
    for (const char* list : {"n", "inembed", "onembed", "kinds", "dims", "batch"})
        if (key == list) return take_list(key, value);
    take_number(key, number<int>(value));
}

void call_words::take_flag(const std::string& word) {
    if (word == "inplace")
        many_.out = in_;
    else if (word == "split" && is_guru_)
        split_ = split_arrays;
    else if (word == "wide" && is_guru_)
        wide_ = true;
    else
        throw std::invalid_argument("'" + word + "' is no word of this call");
}

void call_words::take_list(const std::string& key, const std::string& value) {
    if (key == "n") n_ = numbers<int>(value);
    if (key == "inembed") inembed_ = numbers<int>(value);
    if (key == "onembed") onembed_ = numbers<int>(value);
    if (key == "kinds") kinds_ = numbers<uint32_t>(value);
    if (key == "dims") dims_ = triples(value);
    if (key == "batch") batch_ = triples(value);
    for (const auto* list : {&inembed_, &onembed_})
        if (!list->empty() && list->size() < n_.size()) throw std::invalid_argument("embeds are as many as sizes");
    narrow_dims_ = narrowed(dims_);
    narrow_batch_ = narrowed(batch_);
}

void call_words::take_number(const std::string& key, int value) {
    const struct {
        const char* key;
        int many_arguments::* field;
    } fields[] = {{"howmany", &many_arguments::howmany}, {"istride", &many_arguments::istride},
                  {"idist", &many_arguments::idist},     {"ostride", &many_arguments::ostride},
                  {"odist", &many_arguments::odist},     {"sign", &many_arguments::sign}};
    for (const auto& f : fields)
        if (key == f.key) {
            many_.*f.field = value;
            return;
        }
    throw std::invalid_argument("'" + key + "' is no word of this call");
}

guru_arguments call_words::guru() const {
    const bool split = split_ == split_arrays;
    const bool split_in = split && many_.kind != kind_r2c, split_out = split && many_.kind != kind_c2r;
    const auto list = [&](const auto& wide, const auto& narrow) {
        return wide_ ? dim_list(pointer(wide)) : dim_list(pointer(narrow));
    };
    guru_arguments a = {wide_ ? width::wide : width::narrow,
                        many_.kind,
                        many_.sign,
                        split_,
                        0,
                        static_cast<int>(dims_.size()),
                        list(dims_, narrow_dims_),
                        static_cast<int>(batch_.size()),
                        list(batch_, narrow_batch_),
                        many_.in,
                        split_in ? const_cast<float*>(in_imag_) : nullptr,
                        many_.out,
                        split_out ? const_cast<float*>(out_imag_) : nullptr,
                        pointer(kinds_)};
    return a;
}

const char* call_words::refusal() const { return is_guru_ ? guru_refusal(guru()) : many_refusal(many_); }

fft_plan* call_words::record() const { return is_guru_ ? guru_record(guru()) : many_record(many_); }
