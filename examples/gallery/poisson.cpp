// SPDX-License-Identifier: Apache-2.0
// poisson FOLDER
// The potential of charges in an earthed box: - laplace u = f with u = 0 on the walls, on a grid of 95 x 95 x 95. Sine
// transforms of type I make the equation diagonal: one way, a division, the way back (Buzbee, Golub and Nielson 1970).
#include <cmath>
#include <cstdio>
#include <numbers>
#include <qfftf.hpp>

#include "files.h"

constexpr int n = 95;  // n + 1 = 96 is what has to be a good length
size_t at(int x, int y, int z) { return (size_t(x) * n + y) * n + z; }

int main(int argc, char** argv) {
    if (argc != 2) fail("name a folder to write to");
    plot_folder plot(argv[1]);
    std::vector<float> u(size_t(n) * n * n);
    const auto sines = qfftf::plan_r2r({n, n, n}, u, u, {3, qfftf::r2r::rodft00});  // in place, its own inverse

    struct {
        int x, y;
        float charge;
    } charges[] = {{24, 30, 1}, {30, 66, -1}, {66, 40, 1.5f}, {72, 74, -0.7f}, {50, 16, -0.8f}};
    for (const auto& c : charges) u[at(c.x, c.y, n / 2)] = c.charge;
    const std::vector<float> f = u;

    sines();
    std::vector<double> eigenvalue(n);  // of the second difference
    for (int k = 0; k < n; ++k) eigenvalue[k] = 2 - 2 * std::cos(std::numbers::pi * (k + 1) / (n + 1));
    const double scale = std::pow(2.0 * (n + 1), 3);
    for (int x = 0; x < n; ++x)
        for (int y = 0; y < n; ++y)
            for (int z = 0; z < n; ++z)
                u[at(x, y, z)] /= float((eigenvalue[x] + eigenvalue[y] + eigenvalue[z]) * scale);
    sines();

    double residual = 0, size = 0;  // the equation itself, at every point of the grid
    const auto value = [&](int x, int y, int z) {
        return x < 0 || y < 0 || z < 0 || x >= n || y >= n || z >= n ? 0.0 : double(u[at(x, y, z)]);
    };
    for (int x = 0; x < n; ++x)
        for (int y = 0; y < n; ++y)
            for (int z = 0; z < n; ++z) {
                const double laplace = value(x - 1, y, z) + value(x + 1, y, z) + value(x, y - 1, z) +
                                       value(x, y + 1, z) + value(x, y, z - 1) + value(x, y, z + 1) -
                                       6 * value(x, y, z);
                residual += std::pow(laplace + f[at(x, y, z)], 2);
                size += std::pow(f[at(x, y, z)], 2);
            }
    std::printf("%d unknowns; the equation holds within %.1e\n", n * n * n, std::sqrt(residual / size));
    if (!(residual < 1e-8 * size)) fail("which is too far away");

    std::vector<float> slice;
    for (int y = 0; y < n; ++y)
        for (int x = 0; x < n; ++x) slice.push_back(u[at(x, y, n / 2 + 2)] * 100);
    plot.array("slice", slice);
    plot.value("n", n);
}
