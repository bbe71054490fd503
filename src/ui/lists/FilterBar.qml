import QtQuick
import Vellmoor.Controls
import Vellmoor.Models

// Which categories a cleanup list shows.
Segmented {
    choices: [{
            "value": "all",
            "title": L.tr("全部")
        }, {
            "value": "recommended",
            "title": L.tr("推荐")
        }, {
            "value": "selected",
            "title": L.tr("已选择")
        }]
    name: "filter"
}
