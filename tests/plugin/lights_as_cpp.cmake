# Turns the CgFX text TEXT into the C++ header OUTPUT: a semantic is left out, and a parameter that
# is an output becomes a reference.
file(READ "${TEXT}" text)
string(REPLACE " : View;" ";" text "${text}")
string(REPLACE "out float4 " "float4& " text "${text}")
file(WRITE "${OUTPUT}" "${text}")
