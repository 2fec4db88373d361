# SPDX-License-Identifier: MIT
"""Writes the files of NumPy and SciPy in tests/data/exchange: python3 numpy_scipy.py <folder>"""

import os
import sys

import numpy as np
import scipy.io
import scipy.sparse

os.chdir(sys.argv[1])
A = np.array([[1, -0.5, 1 / 3, 1e20],
              [0.1 + 0.2, -0.0, 5e-324, 123456789],
              [1.7976931348623157e308, 2.2250738585072014e-308, -1e-20, 3]])
np.save("numpy.npy", A)
np.save("numpy-by-columns.npy", np.asfortranarray(A))
np.save("numpy-big-endian.npy", A.astype(">f8"))
for version in [(2, 0), (3, 0)]:
    with open(f"numpy-version-{version[0]}.npy", "wb") as file:
        np.lib.format.write_array(file, A, version)
np.save("numpy-float32.npy", np.array([[0.1, -2.5]], dtype="f4"))
np.save("numpy-complex.npy", A + 1j)
np.savetxt("numpy-savetxt.txt", A)
np.savetxt("numpy-savetxt.csv", A, delimiter=",", header="a,b,c,d", fmt="%.17g")

S = scipy.sparse.coo_matrix(([2.5, -1, 7], ([0, 2, 2], [1, 0, 3])), shape=(3, 4))
symmetric = np.array([[1, 2, 0], [2, -0.5, 1 / 3], [0, 1 / 3, 4]])
scipy.io.mmwrite("scipy-array.mtx", A, precision=17)
scipy.io.mmwrite("scipy-coordinate.mtx", S)
scipy.io.mmwrite("scipy-symmetric.mtx", scipy.sparse.coo_matrix(symmetric), precision=17)

everything = {
    "A": A,
    "S": S.tocsc(),
    "integers": np.int16([[1, -2], [300, 4]]),
    "huge": np.uint64([[1, 2**64 - 1]]),
    "flags": np.array([[True, False]]),
    "complex": A + 1j,
    "text": "hello",
    "record": {"a": 1, "b": {"c": 2}},
    "three": np.zeros((2, 3, 4)),
}
scipy.io.savemat("scipy-5.mat", everything)
scipy.io.savemat("scipy-7.mat", everything, do_compression=True)
scipy.io.savemat("scipy-4.mat", {k: everything[k] for k in ["A", "S", "complex", "text"]}, format="4")
