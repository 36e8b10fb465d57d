import QtQuick
import BrindlecoveConnectorGUI

// The outcomes of actions that a screen reader speaks, in the words that the window shows.
Announcer {
    id: spoken

    required property ConnectorViewModel viewModel

    Outcome {
        before: "not bound"
        now: spoken.viewModel.bindingStatus
        words: "Binding: " + spoken.viewModel.bindingStatus
    }

    Outcome {
        before: "unknown"
        now: spoken.viewModel.connectorStatus
        words: "Connector: " + spoken.viewModel.connectorStatus
    }

    Outcome {
        before: "unknown"
        now: spoken.viewModel.serverStatus
        words: "Server: " + spoken.viewModel.serverStatus
    }

    Outcome {
        now: spoken.viewModel.tokenDetailsExpanded
        words: "Token and bind details: " + (spoken.viewModel.tokenDetailsExpanded ? "shown" : "hidden")
    }

    Outcome {
        now: spoken.viewModel.selectedExchange.name
        words: "Exchange API: " + spoken.viewModel.selectedExchange.name
    }

    Outcome {
        now: spoken.viewModel.selectedDraft.status
        words: "Status: " + spoken.viewModel.selectedDraft.status
    }

    Outcome {
        now: spoken.viewModel.selectedBalance.headline
        words: spoken.viewModel.hasSelectedBalance
            ? "Balance: " + spoken.viewModel.selectedBalance.headline : "Balance not loaded yet"
    }

    // The words are the same after each step, so each new answer is announced.
    Outcome {
        now: spoken.viewModel.lastUpdateOutput
        words: spoken.viewModel.lastUpdateOutput === "" ? "No update action yet" : "Update action completed"
    }

    Outcome {
        now: spoken.viewModel.logsExpanded
        words: "Technical log: "
            + (spoken.viewModel.logsExpanded ? spoken.viewModel.logs.count + " entries" : "hidden")
    }
}
