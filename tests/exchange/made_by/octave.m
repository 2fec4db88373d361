% SPDX-License-Identifier: MIT
% Writes the files of GNU Octave in tests/data/exchange: octave-cli octave.m <folder>
cd(argv(){1});
A = [1, -0.5, 1/3, 1e20; 0.1+0.2, -0, 5e-324, 123456789; 1.7976931348623157e308, 2.2250738585072014e-308, -1e-20, 3];
S = sparse([1 3 3], [2 1 4], [2.5 -1 7], 3, 4);
scalar = pi;
single_matrix = single([0.1 -2.5]);
flags = [true false];
integers = int8([1 -2; 3 4]);
huge = intmax("uint64");
range = 0:0.1:0.55;
down = 5:-2:0;
diagonal = 2.5 * eye(2, 3);
permutation = eye(3)([2 3 1], :);
z = [1+2i 3];
text = ["# name: fake"; "# type: text"];
nested = {1, "x"; [1 2], {A}};
record.a = A;
record.b.c = 5;
infinite = [1 Inf];
none = zeros(0, 3);
three = zeros(2, 2, 2);
last = -0;
save("-text", "octave.txt");
save("-v4", "octave-4.mat", "A", "scalar");
save("-v6", "octave-6.mat", "A", "S", "scalar", "integers");
save("-v7", "octave-7.mat", "A", "S", "scalar", "integers");
dlmwrite("octave-dlmwrite.txt", A(1:2, :), "delimiter", "\t", "precision", "%.17g");
