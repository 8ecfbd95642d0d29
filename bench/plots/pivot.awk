# SPDX-License-Identifier: Apache-2.0
# One line per problem with the column `value` of each library: awk -F, -v value=NAME -f pivot.awk TABLE
# Problems that differ in their size alone stand together, by rising size.
function family(p) { sub(/ [0-9x]+/, "", p); return p }
function points(p,    words, sizes, n, product, k) {
    split(p, words, " ")
    n = split(words[2], sizes, "x")
    product = 1
    for (k = 1; k <= n; ++k) product *= sizes[k]
    return product
}
function follows(a, b) {
    if (family_place[family(a)] != family_place[family(b)]) return family_place[family(a)] > family_place[family(b)]
    return points(a) > points(b)
}
/^#/ { next }
!column { for (i = 1; i <= NF; ++i) if ($i == value) column = i; next }
!($1 in row) {
    if (!(family($1) in family_place)) family_place[family($1)] = ++families
    for (at = ++rows; at > 1 && follows(problem[at - 1], $1); --at) problem[at] = problem[at - 1]
    problem[at] = $1
    row[$1] = 1
}
!($2 in place) { place[$2] = ++libraries; library[libraries] = $2 }
{ figure[$1, place[$2]] = $column }
END {
    printf "problem"
    for (l = 1; l <= libraries; ++l) printf ",%s", library[l]
    printf "\n"
    for (r = 1; r <= rows; ++r) {
        printf "%s", problem[r]
        for (l = 1; l <= libraries; ++l) printf ",%s", ((problem[r], l) in figure) ? figure[problem[r], l] : 0
        printf "\n"
    }
}
