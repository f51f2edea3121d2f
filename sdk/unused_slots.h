// The gaps in the host's virtual tables.
//
// A gap is a run of operations of the host that the plug-in never calls. Each is written as one
// line that names its slots, UNUSED_SLOTS_5(7_to_11), and holds the places of the operations around
// it. A host may do anything there; what these empty bodies do is never seen.
#ifndef SDK_UNUSED_SLOTS_H
#define SDK_UNUSED_SLOTS_H

#define UNUSED_SLOT(slots)                                                                         \
    virtual void unused_##slots() {}

#define UNUSED_SLOTS_2(slots) UNUSED_SLOT(slots##_a) UNUSED_SLOT(slots##_b)
#define UNUSED_SLOTS_3(slots) UNUSED_SLOTS_2(slots) UNUSED_SLOT(slots##_c)
#define UNUSED_SLOTS_4(slots) UNUSED_SLOTS_3(slots) UNUSED_SLOT(slots##_d)
#define UNUSED_SLOTS_5(slots) UNUSED_SLOTS_4(slots) UNUSED_SLOT(slots##_e)
#define UNUSED_SLOTS_6(slots) UNUSED_SLOTS_5(slots) UNUSED_SLOT(slots##_f)
#define UNUSED_SLOTS_7(slots) UNUSED_SLOTS_6(slots) UNUSED_SLOT(slots##_g)
#define UNUSED_SLOTS_8(slots) UNUSED_SLOTS_7(slots) UNUSED_SLOT(slots##_h)
#define UNUSED_SLOTS_9(slots) UNUSED_SLOTS_8(slots) UNUSED_SLOT(slots##_i)
#define UNUSED_SLOTS_10(slots) UNUSED_SLOTS_9(slots) UNUSED_SLOT(slots##_j)
#define UNUSED_SLOTS_11(slots) UNUSED_SLOTS_10(slots) UNUSED_SLOT(slots##_k)
#define UNUSED_SLOTS_12(slots) UNUSED_SLOTS_11(slots) UNUSED_SLOT(slots##_l)
#define UNUSED_SLOTS_13(slots) UNUSED_SLOTS_12(slots) UNUSED_SLOT(slots##_m)
#define UNUSED_SLOTS_14(slots) UNUSED_SLOTS_13(slots) UNUSED_SLOT(slots##_n)
#define UNUSED_SLOTS_15(slots) UNUSED_SLOTS_14(slots) UNUSED_SLOT(slots##_o)

#endif
