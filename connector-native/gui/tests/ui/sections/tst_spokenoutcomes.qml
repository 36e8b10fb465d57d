import QtQuick
import QtTest
import Testing
import BrindlecoveConnectorGUI

// What a screen reader speaks after each action.
Item {
    id: root

    property ConnectorViewModel viewModel
    property Loader reader

    height: 100
    width: 100

    Component {
        id: fixtures

        Item {
            id: fixture

            property alias viewModel: viewModel
            property alias reader: reader

            ConnectorViewModel {
                id: viewModel
            }

            Loader {
                id: reader

                active: false

                sourceComponent: SpokenOutcomes {
                    viewModel: fixture.viewModel
                }
            }
        }
    }

    SignalSpy {
        id: sentences

        signalName: "spoken"
        target: root.reader ? root.reader.item : null
    }

    TestCase {
        name: "SpokenOutcomes"
        when: windowShown

        function init() {
            Surroundings.connector.reset();
            const fixture = createTemporaryObject(fixtures, root);
            root.viewModel = fixture.viewModel;
            root.reader = fixture.reader;
            sentences.clear();
        }

        function listen() {
            root.reader.active = true;
        }

        // All that has been spoken since the last time. A sentence is spoken when the event loop runs.
        function spoken() {
            wait(0);
            const words = sentences.signalArguments.map(args => args[0]);
            sentences.clear();
            return words;
        }

        function answer(command, output) {
            Surroundings.connector.answer(command, output);
        }

        function test_aFreshWindowSaysNothing() {
            listen();
            compare(spoken(), []);
        }

        // The reader may come later than the first refresh.
        function test_theWordsThatWereNotTheFirstOnesAreSpoken() {
            answer("status", "connector_health=ready");
            answer("server-health", "\"reachable\":true");
            answer("bind-status", "\"bindState\":\"authorized\"");
            root.viewModel.refreshAll();
            root.viewModel.logsExpanded = true;
            root.viewModel.tokenDetailsExpanded = true;
            listen();
            compare(spoken(), ["Binding: authorized, Connector: ready, Server: reachable"]);
        }

        function test_whatIsShownAndHiddenIsSpoken() {
            listen();
            spoken();
            root.viewModel.tokenDetailsExpanded = true;
            compare(spoken(), ["Token and bind details: shown"]);
            root.viewModel.tokenDetailsExpanded = false;
            compare(spoken(), ["Token and bind details: hidden"]);
            root.viewModel.checkUpdate();
            root.viewModel.logsExpanded = true;
            compare(spoken(), ["Technical log: 1 entries"]);
            root.viewModel.logsExpanded = false;
            compare(spoken(), ["Technical log: hidden"]);
        }

        function test_theSelectedExchangeAndItsStatusAreSpoken() {
            listen();
            spoken();
            root.viewModel.selectedExchangeId = "okx";
            compare(spoken(), ["Exchange API: OKX"]);
            answer("validate", "status=invalid");
            root.viewModel.validateSelectedExchange();
            compare(spoken(), ["Status: invalid"]);
        }

        function test_aBalanceThatComesOrGoesIsSpoken() {
            listen();
            spoken();
            answer("balance", '{"status":"error","reason":"invalid_api_key"}');
            root.viewModel.loadBalance();
            compare(spoken(), ["Balance: Could not load balance"]);
            root.viewModel.selectedExchangeId = "okx";
            compare(spoken(), ["Exchange API: OKX, Balance not loaded yet"]);
        }

        function test_eachStepOfAnUpdateIsSpoken() {
            listen();
            spoken();
            answer("update-check", "up_to_date=true");
            root.viewModel.checkUpdate();
            compare(spoken(), ["Update action completed"]);
            answer("update-download", "downloaded=true");
            root.viewModel.downloadUpdate();
            compare(spoken(), ["Update action completed"]);
            answer("update-apply", "");
            root.viewModel.applyUpdate();
            compare(spoken(), ["No update action yet"]);
        }
    }
}
