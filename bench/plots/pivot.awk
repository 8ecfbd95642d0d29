# SPDX-License-Identifier: Apache-2.0
# One line per problem with the column `value` of each library: awk -F, -v value=NAME -f pivot.awk TABLE
/^#/ { next }
!column { for (i = 1; i <= NF; ++i) if ($i == value) column = i; next }
!($1 in row) { row[$1] = ++rows; problem[rows] = $1 }
!($2 in place) { place[$2] = ++libraries; library[libraries] = $2 }
{ figure[row[$1], place[$2]] = $column }
END {
    printf "problem"
    for (l = 1; l <= libraries; ++l) printf ",%s", library[l]
    printf "\n"
    for (r = 1; r <= rows; ++r) {
        printf "%s", problem[r]
        for (l = 1; l <= libraries; ++l) printf ",%s", ((r, l) in figure) ? figure[r, l] : 0
        printf "\n"
    }
}
