// Tables of the 53-bit cube root of the double Lab forms, indexed by 32 r + i:
// the cube root of 2^r c_i, c_i = 1 + (2 i + 1) / 64 the midpoint of cell i of
// [1, 2), r in 0..2. Hi is that root rounded to double; Lo is what remains of it
// past Hi, rounded to double (about 2^-66 relative to the root).
#pragma once

namespace lum::lab {

// Cube roots rounded to double.
alignas(64) inline constexpr double kCbrtHi[96] = {
    0x1.01539221d4c97p+0, 0x1.03f06771a2e33p+0, 0x1.06800e629d672p+0,
    0x1.090328731deb2p+0, 0x1.0b7a4b1bd64acp+0, 0x1.0de601024fb88p+0,
    0x1.1046cb0597001p+0, 0x1.129d212a9ba9cp+0, 0x1.14e9736cdaf39p+0,
    0x1.172c2a772f508p+0, 0x1.1965a848001d3p+0, 0x1.1b9648c38c55dp+0,
    0x1.1dbe6236a0c45p+0, 0x1.1fde45cbb1f9fp+0, 0x1.21f63ff409043p+0,
    0x1.240698c6746e5p+0, 0x1.260f9454bb99bp+0, 0x1.281172f8e7074p+0,
    0x1.2a0c719b4b6d1p+0, 0x1.2c00c9f2263edp+0, 0x1.2deeb2bb7fb79p+0,
    0x1.2fd65ff1efbbcp+0, 0x1.31b802fccf6a2p+0, 0x1.3393cadc50709p+0,
    0x1.3569e451e4c2bp+0, 0x1.373a7a0554cdfp+0, 0x1.3905b4a6d76cep+0,
    0x1.3acbbb0e756b7p+0, 0x1.3c8cb258fa341p+0, 0x1.3e48be02ac0cfp+0,
    0x1.4000000000000p+0, 0x1.41b298d47800ep+0, 0x1.443604b34d9b2p+0,
    0x1.4780b20906571p+0, 0x1.4abac3ee06707p+0, 0x1.4de505da66b8dp+0,
    0x1.51003420a5c07p+0, 0x1.540cfd6fd11c2p+0, 0x1.570c04260716cp+0,
    0x1.59fddf7a45f38p+0, 0x1.5ce31c83539dfp+0, 0x1.5fbc3f20966a5p+0,
    0x1.6289c2c8f1b70p+0, 0x1.654c1b4316dd0p+0, 0x1.6803b54a34e44p+0,
    0x1.6ab0f72182659p+0, 0x1.6d544118c08bcp+0, 0x1.6fedee0388d4ap+0,
    0x1.727e53a4f645fp+0, 0x1.7505c31104115p+0, 0x1.77848904cd54ap+0,
    0x1.79faee36b2535p+0, 0x1.7c69379f4605cp+0, 0x1.7ecfa6bbca392p+0,
    0x1.812e79cae7ebap+0, 0x1.8385ec043c71dp+0, 0x1.85d635cb41b9ep+0,
    0x1.881f8cde083dcp+0, 0x1.8a6224802b8a8p+0, 0x1.8c9e2da25e5e4p+0,
    0x1.8ed3d706e1010p+0, 0x1.91034d632b6e0p+0, 0x1.932cbb7f0cf2ep+0,
    0x1.95504a517bf3bp+0, 0x1.987af34f8bb19p+0, 0x1.9ca0a8337b317p+0,
    0x1.a0b1709cc13d5p+0, 0x1.a4ae4ce6419edp+0, 0x1.a8982a5567032p+0,
    0x1.ac6fe500ab570p+0, 0x1.b036497a15a17p+0, 0x1.b3ec164671755p+0,
    0x1.b791fd288c46fp+0, 0x1.bb28a44693be4p+0, 0x1.beb0a72eb6e31p+0,
    0x1.c22a97bf5f698p+0, 0x1.c596fef6af983p+0, 0x1.c8f65dac655a3p+0,
    0x1.cc492d38ce8dap+0, 0x1.cf8fe00b19368p+0, 0x1.d2cae230f870ap+0,
    0x1.d5fa99d152090p+0, 0x1.d91f679b6e505p+0, 0x1.dc39a72bf2303p+0,
    0x1.df49af68c1570p+0, 0x1.e24fd2d4c23b9p+0, 0x1.e54c5fdc5ec73p+0,
    0x1.e83fa11b81dbcp+0, 0x1.eb29dd9dbaf25p+0, 0x1.ee0b59191d375p+0,
    0x1.f0e454245e4c0p+0, 0x1.f3b50c68a9dd3p+0, 0x1.f67dbccf922ddp+0,
    0x1.f93e9dad7a4a6p+0, 0x1.fbf7e4e8cc9ccp+0, 0x1.fea9c61e47cd3p+0,
};
// The remainders past kCbrtHi.
alignas(64) inline constexpr double kCbrtLo[96] = {
    0x1.6ea1c3189cbd5p-56, 0x1.5b5d69f8d8678p-54, -0x1.b57a0dc284d7bp-54,
    0x1.c65ef220a4107p-54, 0x1.3aeabfe0a511fp-57, -0x1.318c213b8d77dp-54,
    -0x1.cfc086f7acab6p-54, -0x1.b7ce7c64f1837p-54, -0x1.d2cc905775f6bp-55,
    -0x1.0af9734347334p-56, 0x1.1c6a574a52f6ap-56, 0x1.53d24556529bfp-54,
    0x1.3b597f55fb372p-54, 0x1.3647bfa4c9d42p-56, -0x1.4ddea841ddf27p-55,
    0x1.879ba4bf3b3d7p-54, 0x1.fab0c13f469e1p-54, -0x1.e7765bc31332bp-54,
    -0x1.bdf74a96025fep-55, -0x1.ec0be268941a5p-54, -0x1.1fda797fd0b9ep-56,
    0x1.dc858047b4423p-55, 0x1.f845dd2cd4eb9p-55, -0x1.3cfbcdf50ced1p-57,
    -0x1.8da5a3fcb94a6p-54, -0x1.b7ba51285638fp-55, 0x1.9d178b333da67p-58,
    -0x1.48f24b8533a30p-55, -0x1.7ce1133275884p-54, -0x1.12a2bf5c727bcp-54,
    0x0.0p+0, 0x1.37d0b6125acfap-57, 0x1.9f0c106cb298fp-55,
    0x1.53eb53c1a2de6p-54, -0x1.59c57dace5dd3p-57, 0x1.41d4a5631d8c4p-55,
    0x1.6476e0428a804p-54, -0x1.cb47fc857b767p-54, -0x1.09fac7abf42bbp-54,
    0x1.368cd990a4ff9p-55, 0x1.b72061473c912p-55, -0x1.00b384333f516p-55,
    0x1.e723a3f44c016p-56, -0x1.1086dbdba4f51p-56, 0x1.34bb0e5240d9ep-56,
    0x1.f4b60121364b3p-55, 0x1.d4732b2e13040p-54, 0x1.7e167027d5b46p-55,
    -0x1.412cd86966696p-54, -0x1.d40c01ab5a82dp-54, -0x1.94f556fcb9b21p-54,
    -0x1.e733ba230995ap-54, -0x1.b21f839ec740dp-54, -0x1.98336096f65f3p-55,
    -0x1.6d6767b751fa2p-59, 0x1.922bca9b108a6p-54, -0x1.0ee10fd1775acp-55,
    -0x1.98e5c84b79dc7p-54, 0x1.7db966dd9173dp-60, 0x1.e06feb5bc22a1p-55,
    0x1.a2f2df528019ep-54, -0x1.7c0e5bd959c3cp-54, -0x1.954caba6c9349p-54,
    -0x1.efaaa86a017bep-54, 0x1.2c209ad9ac3c1p-57, 0x1.ac22867b35389p-56,
    0x1.75edd2191af37p-54, 0x1.c5abc3ce9e443p-56, -0x1.e0e88eca95824p-54,
    0x1.1570be124804ap-54, 0x1.c7447b5a0c02cp-54, 0x1.1d8deebd4bd1dp-54,
    0x1.da54fcd722bf0p-54, 0x1.caacb3ec1e5e6p-61, 0x1.0110185272e71p-55,
    -0x1.5a16dd1d702c8p-56, 0x1.c68df597f2445p-55, 0x1.c5fa8107ab175p-55,
    -0x1.8f9697e901bbep-56, -0x1.73e52ca577742p-54, -0x1.9626c0cb9ca84p-56,
    -0x1.f28279293756bp-56, 0x1.512f185f061b6p-57, -0x1.1db18aa02c02fp-54,
    0x1.d9090a1dd0ce8p-54, -0x1.bd57c7a2d4669p-55, 0x1.531b4ecd41d26p-55,
    -0x1.e07da62f69082p-55, 0x1.6d1685cde5084p-55, -0x1.3d26f08000e36p-54,
    -0x1.77f6dd64465ecp-54, 0x1.a5e11a10300b8p-54, -0x1.d8252fb1a6b68p-56,
    0x1.3cf857a14a3c8p-54, -0x1.728e3fffa7acbp-54, 0x1.f1c28650186e4p-54,
};

}  // namespace lum::lab
