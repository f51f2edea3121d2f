# Turns the CgFX text TEXT into the C++ header OUTPUT: directives and the semantic are left out, and a
# parameter that is an output becomes a reference.
file(READ "${TEXT}" text)
string(REGEX REPLACE "\n#[^\n]*" "\n" text "${text}")
string(REPLACE " : View;" ";" text "${text}")
string(REPLACE "out float4 " "float4& " text "${text}")
file(WRITE "${OUTPUT}" "${text}")
