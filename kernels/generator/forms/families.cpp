// SPDX-License-Identifier: Apache-2.0
// Prints the families and their vocabularies. CMake builds this program of forms.cpp alone when it configures, before
// there is a generator.
#include <cstdio>

#include "kernels/generator/forms/forms.h"

int main() {
    for (const generator::form& f : generator::forms()) std::printf("%s %s\n", f.name, f.in->vocabulary);
}
