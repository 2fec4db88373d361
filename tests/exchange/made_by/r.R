# SPDX-License-Identifier: MIT
# Writes the files of R in tests/data/exchange: Rscript r.R <folder>
setwd(commandArgs(trailingOnly = TRUE)[1])
m <- matrix(c(0.1, -2.5, 4e-20, 5, 6e100, 1e-7), 2)
write.csv(m, "r.csv")
write.csv2(m, "r-comma.csv")
write.table(m, "r-table.txt")
rownames(m) <- c("one, \"first\"", "two")
colnames(m) <- c("x", "y", "z")
write.csv(m, "r-named.csv")
