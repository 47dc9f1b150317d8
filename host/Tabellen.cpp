#include "orvostatbs/host/Tabellen.h"

namespace orvostat {

namespace {

template <class... TFelder>
constexpr const STabelle * BESCHREIBUNGEN[] = {&SBeschreibung<TFelder>::tabelle...};

} // namespace

std::span<const STabelle * const> AlleTabellen() {
    return BESCHREIBUNGEN<
        CTPraxis_Fields, CTKzv_Fields, CTMandant_Fields, CTAdr_Fields, CTPersonal_Fields, CTLeb_Fields,
        CTOrvoKas_Fields, CTPwGroup_Fields, CTPunktWert_Fields, CTParPool_Fields, CTSelectPool_Fields,
        CTGO_Fields, CTGoPunkte_Fields, CTGoCheck_Fields, CTGoBudget_Fields, CTPat_Fields, CTVDesc_Fields,
        CTHistRecall_Fields, CTABefund_Fields, CTPlan_Fields, CTBill_Fields, CTBeh_Fields, CTRoeBefund_Fields,
        CTLBlock_Fields, CTLBlockEntry_Fields, CTGLBloc_Fields, CTGLBlocEntry_Fields, CTGLKuFakt_Fields,
        CTFakt_Fields, CTKTraeger_Fields, CTRezept_Fields, CHMVRecord_Fields, CTGips_Fields, CTTbEntry_Fields,
        CTDatei_Fields>;
}

} // namespace orvostat
