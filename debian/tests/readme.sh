# The README's example on the sample database. Source it in the tree's top folder, build the program
# "readme" from readme.cpp in the folder that it changes to, then call expect_output.
# shellcheck shell=bash
top=$PWD
cd "$AUTOPKGTEST_TMP" || exit

"$top/tests/docs/block" "$top/README.md" example >readme.cpp
cat "$top/db/schema.sql" "$top/db/sample.sql" | sqlite3 -bail faults.db

expect_output() {
    diff <("$top/tests/docs/block" "$top/README.md" "readme output") <(./readme)
}
